#pragma once

#include <random>
#include <string>
#include <vector>

#include "fit/Fitter.h"

namespace test {

std::string FullSetText();
// A library of one device, BURIED: macrocells without a pin, with all that they may lead back.
std::string BuriedText();
const fit::Device& DeviceOf(const std::string& mnemonic);

// A design from lines: "2 A", "19 !Y", "0 Z", "node N" declare; "19 !Q D" a D register (T, JK … likewise);
// "Q.OE = A !B + C" is a sum, "Q = 1" and "Q = 0" are constants.
fit::Design MakeDesign(const std::string& lines);

// What random designs are made for.
struct Family {
    const char* Mnemonic;
    const char* Kind;     // of test::Chip; empty: jedutil alone knows it
    const char* Jedutil;  // the device's name there; empty: it is no judge of it
};
const std::vector<Family>& Families();

// Random outputs and inputs as one of the device's modes may have them, some for the fitter to place; not
// each one fits.
fit::Design RandomDesign(std::mt19937& random, const fit::Device& device);

const fit::Sum* TrueOf(const fit::Design& design, std::size_t signal, fit::Input input);
bool Holds(const fit::Sum& sum, const std::vector<bool>& asserted);
// Whether a pin's level is the complement of what its signal asserts.
bool LowAt(const fit::Design& design, const fit::Fit& fit, std::size_t signal);

}  // namespace test
