#include <gtest/gtest.h>

#include "entry/entry_keys.h"

using namespace tarvokin;

namespace {

// A key typed at the end of the text, nothing selected.
int typed(int key, std::string_view text, bool allowSign = true) {
    const int end = static_cast<int>(text.size());
    return CheckDecimalKey(key, text, end, 0, end, allowSign);
}

}  // namespace

TEST(DecimalKey, DigitsAndBackspacePassOtherKeysAreDropped) {
    for (int k = '0'; k <= '9'; ++k) EXPECT_EQ(typed(k, "12"), k);
    EXPECT_EQ(typed(kKeyBackspace, "12.5"), kKeyBackspace);
    for (int k : {int('a'), int('E'), int('e'), int('+'), int(' '), int('/'), 13, 0}) EXPECT_EQ(typed(k, "12"), 0) << k;
}

TEST(DecimalKey, EitherDecimalKeyGivesThePointOnlyOnce) {
    EXPECT_EQ(typed('.', "12"), kKeyPoint);
    EXPECT_EQ(typed(',', "12"), kKeyPoint);
    EXPECT_EQ(typed('.', ""), kKeyPoint);
    EXPECT_EQ(typed('.', "12.5"), 0);
    EXPECT_EQ(typed(',', "12.5"), 0);
    // A pasted "," counts as the field's separator too.
    EXPECT_EQ(typed('.', "12,5"), 0);
    EXPECT_EQ(typed(',', "12,5"), 0);
}

TEST(DecimalKey, MinusOnlyInFrontAndOnlyOnce) {
    EXPECT_EQ(typed('-', "", false), 0);
    EXPECT_EQ(CheckDecimalKey('-', "12", 0, 0, 0, false), 0);
    EXPECT_EQ(CheckDecimalKey('-', "12", 0, 0, 0, true), kKeyMinus);
    EXPECT_EQ(typed('-', "12"), 0);                                     // caret behind the digits
    EXPECT_EQ(CheckDecimalKey('-', "-12", 0, 0, 0, true), 0);          // already signed
    EXPECT_EQ(CheckDecimalKey('-', "-12", 0, 1, 0, true), kKeyMinus);  // typed over the selected sign
    EXPECT_EQ(CheckDecimalKey('-', "12", 0, 2, 0, true), kKeyMinus);   // replaces the selection
    EXPECT_EQ(CheckDecimalKey('-', "-12", 0, 3, 0, false), 0);         // unsigned field: never
    // Digits still pass in front of a sign the user is about to retype.
    EXPECT_EQ(CheckDecimalKey('5', "-12", 0, 1, 0, true), '5');
}

TEST(IntegerKey, DigitsBackspaceAndSignWhenAllowed) {
    EXPECT_EQ(CheckIntegerKey('7', false), '7');
    EXPECT_EQ(CheckIntegerKey(kKeyBackspace, false), kKeyBackspace);
    EXPECT_EQ(CheckIntegerKey('-', false), 0);
    EXPECT_EQ(CheckIntegerKey('-', true), kKeyMinus);
    EXPECT_EQ(CheckIntegerKey('.', true), 0);
    EXPECT_EQ(CheckIntegerKey(',', true), 0);
    EXPECT_EQ(CheckIntegerKey('x', true), 0);
}
