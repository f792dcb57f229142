#pragma once

#include <vector>

#include "wavrik/Waves.h"

namespace wavrik {

// Which part of the time is on screen, and what it comes to in columns of pixels.
class TimeView {
  public:
    void Show(Time end);  // another file: all of it
    void SetEnd(Time end);
    void SetWidth(int pixels);  // what shows all goes on to
    void Fit();
    void ZoomAt(int x, double factor);  // the time at x stays there; 2 shows twice as large
    void ScrollBy(double pixels);
    // Puts that time to the middle unless it is well in view.
    void Reveal(Time at);

    // The place of the scroll bar, in `steps` from 0.
    double Share() const;
    void ScrollToShare(double share);
    double PagesBeside() const;  // how many widths are out of view

    int Width() const { return width_; }
    double PerPixel() const { return perPixel_; }
    Time End() const { return end_; }
    int ToX(Time at) const;  // may be out of view; never far
    Time ToTime(int x) const;

  private:
    double Most() const;  // of PerPixel: all of the time
    void Clamp();

    Time end_ = 0;
    int width_ = 1;
    double first_ = 0;
    double perPixel_ = 1;
};

// Pixels from `From` up to, but without, `To`.
struct Span {
    int From;
    int To;
    Value Shown;  // in the whole of it, or the last one
    bool IsBusy;  // more than one change in each column
};
// What is in view of a signal, from left to right without gaps; a search for each column at most, however
// many changes there are.
std::vector<Span> SpansOf(const Signal& signal, const TimeView& view);

struct Stripe {
    int From;
    int To;
};
// The vectors in view where another value was found than expected, each as wide as can be seen.
std::vector<Stripe> MismatchesOf(const Signal& signal, const TimeView& view);

// Round times in view, at least so many pixels apart.
std::vector<Time> TicksOf(const TimeView& view, int apart);

}  // namespace wavrik
