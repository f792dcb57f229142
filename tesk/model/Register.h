#pragma once

#include <cstddef>

#include "model/Words.h"

namespace model {

// None: combinational (or an input).
enum class RegisterKind { None, D, T, Jk, Rs, Latch };

inline constexpr Words<RegisterKind, 6> RegisterWords{{{RegisterKind::None, "NONE"},
                                                       {RegisterKind::D, "D"},
                                                       {RegisterKind::T, "T"},
                                                       {RegisterKind::Jk, "JK"},
                                                       {RegisterKind::Rs, "RS"},
                                                       {RegisterKind::Latch, "LATCH"}}};

// The function of a signal that a sum gives; Out: the combinational output.
enum class Input { Out, D, T, J, K, S, R, L, Ck, Ce, Le, Ar, Ap, Sr, Sp, Oe };

inline constexpr std::size_t InputCount = 16;
inline constexpr Words<Input, InputCount> InputWords{{{Input::Out, "OUT"},
                                                      {Input::D, "D"},
                                                      {Input::T, "T"},
                                                      {Input::J, "J"},
                                                      {Input::K, "K"},
                                                      {Input::S, "S"},
                                                      {Input::R, "R"},
                                                      {Input::L, "L"},
                                                      {Input::Ck, "CK"},
                                                      {Input::Ce, "CE"},
                                                      {Input::Le, "LE"},
                                                      {Input::Ar, "AR"},
                                                      {Input::Ap, "AP"},
                                                      {Input::Sr, "SR"},
                                                      {Input::Sp, "SP"},
                                                      {Input::Oe, "OE"}}};

}  // namespace model
