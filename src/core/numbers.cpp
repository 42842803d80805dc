#include "core/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace tarvokin {

namespace {

constexpr double kPow10[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10};

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

std::string_view trimmed(std::string_view s) {
    while (!s.empty() && isBlank(s.front())) s.remove_prefix(1);
    while (!s.empty() && isBlank(s.back())) s.remove_suffix(1);
    return s;
}

// Length of the number at the start of s (sign, digits, point, exponent), 0 if none.
size_t numberPrefix(std::string_view s) {
    size_t i = 0;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) ++i;
    size_t digits = 0;
    while (i < s.size() && s[i] >= '0' && s[i] <= '9') { ++i; ++digits; }
    if (i < s.size() && s[i] == '.') {
        ++i;
        while (i < s.size() && s[i] >= '0' && s[i] <= '9') { ++i; ++digits; }
    }
    if (digits == 0) return 0;
    if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
        size_t j = i + 1;
        if (j < s.size() && (s[j] == '+' || s[j] == '-')) ++j;
        size_t expDigits = 0;
        while (j < s.size() && s[j] >= '0' && s[j] <= '9') { ++j; ++expDigits; }
        if (expDigits > 0) i = j;
    }
    return i;
}

double parsePrefix(std::string_view s, size_t len) {
    std::string_view num = s.substr(0, len);
    if (!num.empty() && num.front() == '+') num.remove_prefix(1);
    double v = 0.0;
    auto res = std::from_chars(num.data(), num.data() + num.size(), v);
    return res.ec == std::errc() ? v : 0.0;
}

}  // namespace

void throwTypeMismatch(std::string_view text) {
    (void)text;
    throw RunError(kErrTypeMismatch, "Incompatibilité de type");
}

void throwDivisionByZero() { throw RunError(kErrDivisionByZero, "Division par zéro"); }

void throwOverflow() { throw RunError(kErrOverflow, "Dépassement de capacité"); }

bool tryNumber(std::string_view text, double& out) {
    std::string_view s = trimmed(text);
    size_t len = numberPrefix(s);
    if (len == 0 || len != s.size()) return false;
    std::string_view num = s;
    if (num.front() == '+') num.remove_prefix(1);
    auto res = std::from_chars(num.data(), num.data() + num.size(), out);
    return res.ec == std::errc() && std::isfinite(out);
}

double toNumber(std::string_view text) {
    double v = 0.0;
    if (!tryNumber(text, v)) throwTypeMismatch(text);
    return v;
}

double leadingNumber(std::string_view text) {
    std::string_view s = text;
    while (!s.empty() && isBlank(s.front())) s.remove_prefix(1);
    size_t len = numberPrefix(s);
    if (len == 0) return 0.0;
    double v = parsePrefix(s, len);
    return std::isfinite(v) ? v : 0.0;
}

double divide(double a, double b) {
    if (b == 0.0) throwDivisionByZero();
    return a / b;
}

double roundHalfAway(double x, int decimals) {
    if (!std::isfinite(x) || decimals < 0 || decimals > 10) return x;
    // Most values lie nowhere near a tie: their 15 digits differ from the
    // double by under 5e-15 of it, so when the part below the cut is further
    // than that from one half the digits round it as the double does, and
    // the formatting below (most of the time of the whole calculation's
    // rounding) can be spared.
    const double scaled = std::fabs(x) * kPow10[decimals];
    if (scaled < 1e13) {
        const double whole = std::floor(scaled);
        const double below = scaled - whole;
        if (std::fabs(below - 0.5) > 1e-13 * std::max(1.0, scaled)) {
            const double r = (below > 0.5 ? whole + 1 : whole) / kPow10[decimals];
            return x < 0 ? -r : r;
        }
    }
    // The decimal value of x as 15 significant digits show it: 2.675 is
    // stored as 2.67499999..., whose 15-digit form 2.67500000000000 is the
    // tie; 0.007049999999999992 reads 0.00704999999999999 and is no tie. A
    // fixed tolerance would be far coarser than 15 digits for small values.
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.14e", std::fabs(x));  // d.dddddddddddddde[+-]XX
    char digits[15];
    digits[0] = buf[0];
    std::memcpy(digits + 1, buf + 2, 14);
    const int exponent = std::atoi(buf + 17);
    // Digits at or above the cut (10^-decimals): those of place >= -decimals.
    const int keep = exponent + decimals + 1;
    if (keep >= 15) return x;  // the cut lies beyond the 15 digits: nothing to round
    if (keep < 0) return x < 0 ? -0.0 : 0.0;
    unsigned long long n = 0;
    for (int i = 0; i < keep; ++i) n = n * 10 + static_cast<unsigned>(digits[i] - '0');
    if (digits[keep] >= '5') ++n;
    const double r = static_cast<double>(n) / kPow10[decimals];
    return x < 0 ? -r : r;
}

std::string fixed(double x, int decimals) {
    if (!std::isfinite(x)) throwOverflow();
    if (decimals < 0) decimals = 0;
    if (decimals > 10) decimals = 10;
    const double r = roundHalfAway(x, decimals);
    const double scaled = std::fabs(r) * kPow10[decimals];
    if (scaled >= 9.0e15) {
        const int n = std::snprintf(nullptr, 0, "%.*f", decimals, r);
        std::string big(static_cast<size_t>(n), '\0');
        std::snprintf(big.data(), big.size() + 1, "%.*f", decimals, r);
        return big;
    }
    unsigned long long n = static_cast<unsigned long long>(std::llround(scaled));
    char digits[32];
    auto res = std::to_chars(digits, digits + sizeof digits, n);
    std::string_view ds(digits, static_cast<size_t>(res.ptr - digits));
    std::string out;
    out.reserve(ds.size() + 4);
    if (r < 0 && n != 0) out.push_back('-');
    if (decimals == 0) {
        out.append(ds);
        return out;
    }
    const size_t d = static_cast<size_t>(decimals);
    if (ds.size() <= d) {
        out.append("0.");
        out.append(d - ds.size(), '0');
        out.append(ds);
    } else {
        out.append(ds.substr(0, ds.size() - d));
        out.push_back('.');
        out.append(ds.substr(ds.size() - d));
    }
    return out;
}

std::string plain(double x) {
    if (!std::isfinite(x)) throwOverflow();
    if (x == 0.0) return "0";
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.15g", x);
    std::string s(buf);
    auto e = s.find('e');
    if (e == std::string::npos) return s;
    // 1e-05 -> 1E-05, as the sheet has always written tiny and huge values.
    std::string mant = s.substr(0, e);
    std::string ex = s.substr(e + 1);
    char sign = '+';
    if (!ex.empty() && (ex[0] == '+' || ex[0] == '-')) {
        sign = ex[0];
        ex.erase(0, 1);
    }
    while (ex.size() > 2 && ex[0] == '0') ex.erase(0, 1);
    return mant + "E" + sign + ex;
}

std::string roundedPlain(double x, int decimals) { return plain(toNumber(fixed(x, decimals)) * 1.0); }

std::string fixedOrDash(double x, int decimals) { return std::isfinite(x) ? fixed(x, decimals) : std::string("-"); }

double intPart(double x) { return std::trunc(x); }

}  // namespace tarvokin
