#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iomanip>
#include <limits>
#include <random>
#include <string>

#include "core/numbers.h"

using namespace tarvokin;

TEST(FixedDecimals, RoundsHalfAwayFromZeroOnTheDecimalValue) {
    // 2.675 and 1.005 are stored just below the tie; their decimal value is the tie.
    EXPECT_EQ(fixed(2.675, 2), "2.68");
    EXPECT_EQ(fixed(-2.675, 2), "-2.68");
    EXPECT_EQ(fixed(1.005, 2), "1.01");
    EXPECT_EQ(fixed(0.125, 2), "0.13");
    EXPECT_EQ(fixed(2.5, 0), "3");
    EXPECT_EQ(fixed(-2.5, 0), "-3");
    EXPECT_EQ(fixed(2.674999, 2), "2.67");
}

TEST(FixedDecimals, ATieIsATieAtFifteenSignificantDigitsOnly) {
    // 0.0094 x 0.75 as a slope gives 0.007049999999999992: its 15 digits
    // read 0.00704999999999999, below the tie, whatever the magnitude.
    EXPECT_EQ(roundHalfAway(0.007049999999999992, 4), 0.007);
    EXPECT_EQ(fixed(0.007049999999999992, 4), "0.0070");
    struct Case {
        double x;
        int decimals;
        const char* text;
    };
    const Case table[] = {
        {0.00704999999999999, 4, "0.0070"}, {0.00705, 4, "0.0071"},          {1.4999999999999, 0, "1"},
        {1.49999999999999, 0, "1"},         {1.499999999999999, 0, "2"},      {0.285, 2, "0.29"},
        {0.0000125, 6, "0.000013"},         {0.0000124999999999, 6, "0.000012"}, {123456.785, 2, "123456.79"},
        {-0.00704999999999999, 4, "-0.0070"}, {0.3 - 0.1, 1, "0.2"},          {9.995, 2, "10.00"},
        {0.0005, 3, "0.001"},               {0.00049, 3, "0.000"},
    };
    for (const Case& c : table) EXPECT_EQ(fixed(c.x, c.decimals), c.text) << c.x << " to " << c.decimals;
}

// The rounding of the decimal value read from the 15 significant digits of
// the number's text, done the long way: what the calculation's roundings must
// give for any value, near a tie or far from one.
double roundedFromFifteenDigits(double x, int decimals) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.14e", x);
    const long double v = std::strtold(buf, nullptr);
    long double scaled = std::fabs(v) * std::pow(10.0L, decimals);
    char text[64];
    std::snprintf(text, sizeof text, "%.6Lf", scaled);  // the digits below the cut, exact enough to see a tie
    const long double whole = std::floor(scaled);
    const long double below = std::strtold(text, nullptr) - whole;
    // The nearest double to the rounded decimal value.
    const auto n = static_cast<unsigned long long>(below >= 0.5L ? whole + 1 : whole);
    const double r = static_cast<double>(n) / std::pow(10.0, decimals);
    return x < 0 ? -r : r;
}

TEST(FixedDecimals, EveryValueRoundsAsItsFifteenDigitsDo) {
    std::mt19937_64 random(17);
    std::uniform_real_distribution<double> mantissa(-10, 10);
    std::uniform_int_distribution<int> exponent(-8, 8), decimals(0, 8), tieDigits(1, 12);
    for (int i = 0; i < 200000; ++i) {
        const int d = decimals(random);
        double x = mantissa(random) * std::pow(10.0, exponent(random));
        // One in four a tie written with a few digits (2.675, 0.00705...),
        // stored a hair above or below it.
        if (i % 4 == 0) {
            const double step = std::pow(10.0, -d);
            x = (std::floor(x / step) + 0.5) * step;
            x = std::stod(fixed(x, std::min(10, d + tieDigits(random) % 3 + 1)));
        }
        if (std::fabs(x) * std::pow(10.0, d) >= 1e13) continue;
        ASSERT_EQ(roundHalfAway(x, d), roundedFromFifteenDigits(x, d)) << std::setprecision(17) << x << " to " << d;
    }
}

TEST(FixedDecimals, WritesEveryDecimalAndNoNegativeZero) {
    EXPECT_EQ(fixed(3.1, 2), "3.10");
    EXPECT_EQ(fixed(0.0004, 3), "0.000");
    EXPECT_EQ(fixed(-0.0004, 3), "0.000");
    EXPECT_EQ(fixed(12345.6789, 1), "12345.7");
    EXPECT_EQ(fixed(0.05, 7), "0.0500000");
    EXPECT_EQ(fixed(1e17, 2), "100000000000000000.00");
    const std::string huge = fixed(1e300, 2);
    EXPECT_EQ(huge.size(), 304u);
    EXPECT_DOUBLE_EQ(toNumber(huge), 1e300);
}

TEST(FixedDecimals, RefusesInfinityAndNan) {
    EXPECT_THROW(fixed(std::numeric_limits<double>::infinity(), 2), RunError);
    EXPECT_THROW(fixed(std::nan(""), 2), RunError);
    EXPECT_THROW(plain(std::numeric_limits<double>::infinity()), RunError);
}

TEST(PlainText, ShortestFormWithFifteenDigits) {
    EXPECT_EQ(plain(200.0), "200");
    EXPECT_EQ(plain(171.5), "171.5");
    EXPECT_EQ(plain(0.1 + 0.2), "0.3");
    EXPECT_EQ(plain(-0.0), "0");
    EXPECT_EQ(plain(1e-5), "1E-05");
    EXPECT_EQ(roundedPlain(230.456, 2), "230.46");
    EXPECT_EQ(roundedPlain(35.5, 0), "36");
    EXPECT_EQ(roundedPlain(12.345678, 5), "12.34568");
}

TEST(StrictConversion, AcceptsOnlyAWholeNumber) {
    EXPECT_DOUBLE_EQ(toNumber(" 12.5 "), 12.5);
    EXPECT_DOUBLE_EQ(toNumber("-3"), -3.0);
    EXPECT_DOUBLE_EQ(toNumber("+.5"), 0.5);
    EXPECT_DOUBLE_EQ(toNumber("1e3"), 1000.0);
    for (const char* bad : {"", "-", ".", "1,5", "12 mm", "abc", "1e999", "--1"}) {
        EXPECT_THROW(toNumber(bad), RunError) << bad;
    }
    try {
        toNumber("-");
    } catch (const RunError& e) {
        EXPECT_EQ(e.code(), kErrTypeMismatch);
    }
}

TEST(LenientRead, TakesTheLeadingNumber) {
    EXPECT_DOUBLE_EQ(leadingNumber("12.5 mm"), 12.5);
    EXPECT_DOUBLE_EQ(leadingNumber("  -4e1x"), -40.0);
    EXPECT_DOUBLE_EQ(leadingNumber(""), 0.0);
    EXPECT_DOUBLE_EQ(leadingNumber("-"), 0.0);
    EXPECT_DOUBLE_EQ(leadingNumber("1e"), 1.0);
    EXPECT_DOUBLE_EQ(leadingNumber("1e999"), 0.0);
}

TEST(Division, ZeroDivisorIsTheDivisionError) {
    EXPECT_DOUBLE_EQ(divide(1.0, 4.0), 0.25);
    try {
        divide(1.0, 0.0);
        FAIL();
    } catch (const RunError& e) {
        EXPECT_EQ(e.code(), kErrDivisionByZero);
    }
}
