#include "sim/JedVectors.h"

#include <array>
#include <cstdio>

#include "base/Text.h"

namespace sim {
namespace {

constexpr char startOfText = 2;
constexpr char endOfText = 3;
constexpr std::string_view lineEnd = "\r\n";

bool IsVectorField(std::string_view field) {
    const auto text = base::Trim(field);
    return base::StartsWith(text, "QV") || base::StartsWith(text, "V");
}

template <typename... Values>
std::string Format(const char* format, Values... values) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), format, values...);
    return text.data();
}

// What stands between STX and ETX without its vectors: the first field is free text up to its "*".
std::string WithoutVectors(std::string_view body) {
    std::string kept;
    bool first = true;
    for (std::size_t at = 0; at < body.size();) {
        const auto star = body.find('*', at);
        if (star == body.npos) break;
        const auto field = body.substr(at, star - at);
        if (first || !IsVectorField(field)) (kept += field) += '*';
        first = false;
        at = star + 1;
    }
    return kept;
}

}  // namespace

JedVectors::JedVectors(const AbsDesign& design, const SiHead& head)
    : unused_(static_cast<std::size_t>(design.PinCount), 'N') {
    const auto place = [&](std::size_t net) { return static_cast<std::size_t>(design.Nets[net].Pin) - 1; };
    for (std::size_t net = 0; net < design.Nets.size(); ++net)
        if (place(net) < unused_.size()) unused_[place(net)] = 'X';
    for (const std::size_t net : head.Columns) places_.push_back(place(net));
}

void JedVectors::Add(const VectorRecord& record) {
    more_ = count_ == Most;
    if (more_) return;
    fields_ += lineEnd;
    fields_ += "V" + Format("%04zu", ++count_) + " ";
    const std::size_t start = fields_.size();
    fields_ += unused_;
    for (std::size_t i = 0; i < places_.size(); ++i)
        if (places_[i] < unused_.size()) fields_[start + places_[i]] = record.Found[i];
    fields_ += '*';
}

std::string JedVectors::AppendTo(std::string_view jedec, MessageLog& log) const {
    const auto start = jedec.find(startOfText);
    const auto end = start == jedec.npos ? start : jedec.find(endOfText, start);
    if (end == jedec.npos) {
        log.Add("0401vs", 0);
        return {};
    }
    if (more_) log.Add("0403vs", 0, std::to_string(Most));
    std::string text(1, startOfText);
    text += WithoutVectors(jedec.substr(start + 1, end - start - 1));
    text += lineEnd;
    text += "QV" + std::to_string(count_) + "*" + fields_;
    text += lineEnd;
    text += endOfText;
    unsigned sum = 0;
    for (const char c : text) sum += static_cast<unsigned char>(c);
    return std::string(jedec.substr(0, start)) + text + Format("%04X", sum & 0xFFFF) + "\r\n";
}

}  // namespace sim
