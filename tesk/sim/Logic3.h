#pragma once

#include "sim/Machine.h"

// Three-valued logic; HighZ counts as unknown.
namespace sim {

inline Value Known(Value v) { return v == Value::HighZ ? Value::Unknown : v; }
inline Value Not(Value v) {
    return v == Value::Zero ? Value::One : v == Value::One ? Value::Zero : Value::Unknown;
}
// What is known if either of the two may be the value.
inline Value Merge(Value a, Value b) { return a == b ? a : Value::Unknown; }
// `one` if the condition holds, `zero` if not, what both agree on if it is unknown.
inline Value Choose(Value condition, Value one, Value zero) {
    return condition == Value::One ? one : condition == Value::Zero ? zero : Merge(one, zero);
}

}  // namespace sim
