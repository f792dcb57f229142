#include "platform/qt/TextBoxStyles.h"

#include <cstdlib>
#include <utility>

namespace platform::qt {
namespace {

constexpr std::size_t firstOwn = 32;  // the control's own numbers, such as the one of the margin
constexpr std::size_t lastOwn = 39;

bool IsOwn(std::size_t number) { return number >= firstOwn && number <= lastOwn; }

int Distance(const CharStyle& a, const CharStyle& b) {
    int distance = 0;
    for (int shift = 0; shift < 24; shift += 8)
        distance += std::abs(((a.Format.Color >> shift) & 255) - ((b.Format.Color >> shift) & 255));
    distance += a.FontName == b.FontName ? 0 : 4000;
    distance += std::min(std::abs(a.FontSize - b.FontSize), 4000);
    for (const bool CharFormat::*flag : {&CharFormat::Bold, &CharFormat::Italic, &CharFormat::Underline})
        distance += a.Format.*flag == b.Format.*flag ? 0 : 500;
    return distance;
}

}  // namespace

StyleTable::StyleTable(Define define, InUse inUse) : define_(std::move(define)), inUse_(std::move(inUse)) {}

void StyleTable::Reset(const CharStyle& first) {
    taken_.reset();
    held_.reset();
    taken_.set(0);
    for (std::size_t i = 0; i < styles_.size(); ++i) {
        if (IsOwn(i) || styles_[i] == first) continue;
        styles_[i] = first;
        define_(static_cast<Number>(i), first);
    }
}

StyleTable::Number StyleTable::NumberOf(const CharStyle& style) {
    for (std::size_t i = 0; i < styles_.size(); ++i) {
        if (!taken_.test(i) || styles_[i] != style) continue;
        if (holds_ > 0) held_.set(i);
        return static_cast<Number>(i);
    }
    auto number = FreeNumber();
    if (!number) {
        taken_ = (taken_ & inUse_()) | held_;
        number = FreeNumber();
    }
    if (!number) return Likest(style);
    taken_.set(*number);
    if (holds_ > 0) held_.set(*number);
    if (styles_[*number] != style) {
        styles_[*number] = style;
        define_(static_cast<Number>(*number), style);
    }
    return static_cast<Number>(*number);
}

void StyleTable::KeepOnly(const NumberSet& used, const CharStyle& plain) {
    taken_ &= used | held_;
    for (std::size_t i = 0; i < styles_.size(); ++i) {
        if (taken_.test(i) || IsOwn(i) || styles_[i] == plain) continue;
        styles_[i] = plain;
        define_(static_cast<Number>(i), plain);
    }
}

std::optional<std::size_t> StyleTable::FreeNumber() const {
    for (std::size_t i = 0; i < styles_.size(); ++i)
        if (!taken_.test(i) && !IsOwn(i)) return i;
    return std::nullopt;
}

StyleTable::Number StyleTable::Likest(const CharStyle& style) const {
    std::size_t best = 0;
    int least = INT32_MAX;
    for (std::size_t i = 0; i < styles_.size(); ++i) {
        if (IsOwn(i)) continue;
        const int distance = Distance(styles_[i], style);
        if (distance >= least) continue;
        least = distance;
        best = i;
    }
    return static_cast<Number>(best);
}

}  // namespace platform::qt
