// Number text of the sheet: every cell holds text, every calculation converts
// at the moment of use, and every result is written back through one formatter.
// "." is the decimal separator for the whole run.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace tarvokin {

// The run-time error that ends a handler: shown to the user as the numbered
// message "[#7] " followed by the text.
class RunError : public std::runtime_error {
public:
    RunError(int code, const std::string& text) : std::runtime_error(text), code_(code) {}
    int code() const { return code_; }

private:
    int code_;
};

constexpr int kErrOverflow = 6;
constexpr int kErrDivisionByZero = 11;
constexpr int kErrTypeMismatch = 13;

[[noreturn]] void throwTypeMismatch(std::string_view text);
[[noreturn]] void throwDivisionByZero();
[[noreturn]] void throwOverflow();

// Strict conversion of a whole field: blanks around, optional sign, digits,
// optional point and fraction, optional exponent. "" or "-" is a format error.
double toNumber(std::string_view text);
bool tryNumber(std::string_view text, double& out);

// Lenient read of the leading number of a text ("12.5 mm" -> 12.5, "" -> 0).
double leadingNumber(std::string_view text);

// a / b, or the division error when b is zero.
double divide(double a, double b);

// Rounds half away from zero on the decimal value of x (so 2.675 -> 2.68).
double roundHalfAway(double x, int decimals);

// Fixed count of decimals: fixed(3.1, 2) == "3.10". Throws on inf / nan so
// that no cell ever holds one.
std::string fixed(double x, int decimals);

// As fixed(), but a value that could not be computed (inf or nan, what a zero
// divisor leaves in the calculators that carry it along) gives "-".
std::string fixedOrDash(double x, int decimals);

// Plain text of a number, 15 significant digits and no trailing zeros:
// plain(200.0) == "200", plain(171.5) == "171.5".
std::string plain(double x);

// Format to `decimals`, read back, write as plain text: how values read from a
// project file are put into their fields.
std::string roundedPlain(double x, int decimals);

// Whole part by truncation, as the sheet's Int() of a positive value.
double intPart(double x);

}  // namespace tarvokin
