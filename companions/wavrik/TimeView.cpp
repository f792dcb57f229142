#include "wavrik/TimeView.h"

#include <algorithm>
#include <cmath>

namespace wavrik {
namespace {

constexpr double leastPerPixel = 0.02;
constexpr double farAway = 1 << 28;  // pixels, so that sums of some stay numbers

void AddBusy(int x, Value value, std::vector<Span>& spans) {
    if (spans.empty() || !spans.back().IsBusy || spans.back().To != x) spans.push_back({x, x, value, true});
    spans.back().To = x + 1;
    spans.back().Shown = value;
}

}  // namespace

double TimeView::Most() const { return static_cast<double>(std::max<Time>(end_, 1)) / width_; }

void TimeView::Clamp() {
    perPixel_ = std::clamp(perPixel_, std::min(leastPerPixel, Most()), Most());
    const double last = static_cast<double>(end_) - perPixel_ * width_;
    first_ = std::clamp(first_, 0.0, std::max(last, 0.0));
}

void TimeView::Show(Time end) {
    end_ = end;
    Fit();
}

void TimeView::SetEnd(Time end) {
    end_ = end;
    Clamp();
}

void TimeView::SetWidth(int pixels) {
    const bool showsAll = perPixel_ >= Most();
    width_ = std::max(pixels, 1);
    if (showsAll) perPixel_ = Most();
    Clamp();
}

void TimeView::Fit() {
    perPixel_ = Most();
    first_ = 0;
}

void TimeView::ZoomAt(int x, double factor) {
    const double at = first_ + x * perPixel_;
    perPixel_ /= factor;
    Clamp();
    first_ = at - x * perPixel_;
    Clamp();
}

void TimeView::ScrollBy(double pixels) {
    first_ += pixels * perPixel_;
    Clamp();
}

void TimeView::Reveal(Time at) {
    const int x = ToX(at);
    if (x >= 0 && x < width_ * 9 / 10) return;
    first_ = static_cast<double>(at) - perPixel_ * width_ / 2;
    Clamp();
}

double TimeView::PagesBeside() const {
    return std::max(static_cast<double>(end_) / (perPixel_ * width_) - 1, 0.0);
}

double TimeView::Share() const {
    const double beside = PagesBeside() * perPixel_ * width_;
    return beside > 0 ? std::min(first_ / beside, 1.0) : 0;
}

void TimeView::ScrollToShare(double share) {
    first_ = share * PagesBeside() * perPixel_ * width_;
    Clamp();
}

int TimeView::ToX(Time at) const {
    const double x = std::floor((static_cast<double>(at) - first_) / perPixel_);
    return static_cast<int>(std::clamp(x, -farAway, farAway));
}

Time TimeView::ToTime(int x) const {
    return std::clamp<Time>(static_cast<Time>(std::floor(first_ + x * perPixel_)), 0, end_);
}

std::vector<Span> SpansOf(const Signal& signal, const TimeView& view) {
    const auto& changes = signal.Changes;
    // It is mostly near: looked for in steps that double.
    const auto firstBehind = [&](auto from, int x) {
        const auto isBefore = [&](const Change& change) { return view.ToX(change.At) <= x; };
        std::ptrdiff_t step = 1;
        for (; step < changes.end() - from && isBefore(from[step]); step *= 2) from += step;
        return std::partition_point(from, from + std::min(step, changes.end() - from), isBefore);
    };
    std::vector<Span> spans;
    const int right = std::min(view.Width(), view.ToX(view.End()));
    auto next = firstBehind(changes.begin(), -1);
    Value value = next == changes.begin() ? 0 : std::prev(next)->To;
    for (int x = 0; x < right;) {
        const int column = next == changes.end() ? right : std::min(view.ToX(next->At), right);
        if (column > x) spans.push_back({x, column, value, false});
        x = column;
        if (x == right) break;
        const auto behind = firstBehind(next, x);
        const bool isBusy = behind - next > 1;
        value = std::prev(behind)->To;
        next = behind;
        if (!isBusy) continue;
        AddBusy(x++, value, spans);
    }
    return spans;
}

std::vector<Stripe> MismatchesOf(const Signal& signal, const TimeView& view) {
    constexpr int least = 2;  // pixels that can be seen
    const auto& all = signal.Mismatches;
    std::vector<Stripe> stripes;
    auto next = std::partition_point(all.begin(), all.end(), [&](const Mismatch& mismatch) {
        return view.ToX(mismatch.At + VectorTime - 1) < 0;
    });
    while (next != all.end() && view.ToX(next->At) < view.Width()) {
        const int from = std::max(view.ToX(next->At), 0);
        const int to =
            std::clamp(view.ToX(next->At + VectorTime), from + least, std::max(view.Width(), from + least));
        if (!stripes.empty() && stripes.back().To >= from)
            stripes.back().To = std::max(stripes.back().To, to);
        else
            stripes.push_back({from, to});
        next = std::partition_point(next + 1, all.end(), [&](const Mismatch& mismatch) {
            return view.ToX(mismatch.At + VectorTime) <= to;
        });
    }
    return stripes;
}

std::vector<Time> TicksOf(const TimeView& view, int apart) {
    Time step = 1;
    for (int i = 0; static_cast<double>(step) < view.PerPixel() * apart; ++i)
        step = step * (i % 3 == 1 ? 5 : 4) / 2;
    std::vector<Time> ticks;
    for (Time at = view.ToTime(0) / step * step; at <= view.ToTime(view.Width()); at += step)
        ticks.push_back(at);
    return ticks;
}

}  // namespace wavrik
