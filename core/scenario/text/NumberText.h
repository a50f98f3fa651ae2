#ifndef SCENARIO_NUMBERTEXT_H
#define SCENARIO_NUMBERTEXT_H

#include <cstdint>
#include <string>

// Items keep numbers as text and convert them at each use. These conversions read as the C functions do whose
// leniency authors rely on (blanks before, anything after, 0 for no number), but under every locale alike, and
// with an answer for numbers out of range.

// As `atof`: the number that the text begins with, 0.0 if there is none. Takes hexadecimal, "inf" and "nan".
double NumberOf(const std::string& text);

// The nearest 32-bit number; beyond their range it is infinite.
float Narrow(double number);

// As `atoi`: the decimal whole number that the text begins with, 0 if there is none, the nearest limit beyond 32 bits.
std::int32_t WholeNumberOf(const std::string& text);

// Whether `sscanf` with "%f" or "%d" would convert something. Stricter than the functions above: a text without
// any digits is no number here, and a "0x" or an "infin" broken off is none either.
bool BeginsWithNumber(const std::string& text);
bool BeginsWithWholeNumber(const std::string& text);

// As "%f": fixed notation with six decimals.
std::string SixDecimals(double number);

#endif
