#include <gtest/gtest.h>

#include "shell/gui_args.h"

using namespace tarvokin;

TEST(GuiArgs, ReadsHomeOpensLanguageAndProjectInAnyOrder) {
    GuiArgs a;
    std::string error;
    ASSERT_TRUE(ParseGuiArgs({"--open", "17", "P.MDL", "--lang", "1", "--home", "/h", "--open", "8"}, a, error));
    EXPECT_EQ(a.open, (std::vector<int>{17, 8}));
    EXPECT_EQ(a.language, "1");
    EXPECT_EQ(a.home, "/h");
    EXPECT_EQ(a.project, "P.MDL");
    EXPECT_FALSE(a.help || a.version);
    EXPECT_EQ(GuiVersionText(), "TARVOKIN 3.1");
}

TEST(GuiArgs, RefusesWhatItCannotReadWithAReason) {
    for (const std::vector<std::string>& bad :
         {std::vector<std::string>{"--open"}, {"--open", "x"}, {"--open", "0"}, {"--open", "34"}, {"--lang", "4"},
          {"--lang", "en"}, {"--frobnicate"}, {"A.MDL", "B.MDL"}}) {
        GuiArgs a;
        std::string error;
        EXPECT_FALSE(ParseGuiArgs(bad, a, error)) << bad[0];
        EXPECT_FALSE(error.empty());
    }
    GuiArgs a;
    std::string error;
    ASSERT_TRUE(ParseGuiArgs({"--version", "-h"}, a, error));
    EXPECT_TRUE(a.help && a.version);
}
