// A library that takes its process along while it is loaded.
#include <cstdlib>

namespace {
const struct Crash {
    Crash() { std::abort(); }
} crash;
}  // namespace
