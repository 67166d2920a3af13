/// Commands and options that there are not.

#include "command_line/misspelling.h"

#include <gtest/gtest.h>

namespace tarvex::test {
namespace {

struct MisspellingCase {
    const char* given;
    const char* text;
};

TEST(Misspelling, NamesTheNearestWordOrAll) {
    const MisspellingCase kCases[] = {
        {"list", ""},
        {"lst", "there is no command 'lst'; did you mean 'list'?"},
        {"LIST", "there is no command 'LIST'; did you mean 'list'?"},
        {"covnert", "there is no command 'covnert'; did you mean 'convert'?"},
        {"frob", "there is no command 'frob'; the commands are show, list, convert"},
        {"", "there is no command ''; the commands are show, list, convert"},
    };
    for (const auto& [given, text] : kCases) {
        EXPECT_EQ(Misspelling("command", given, {"show", "list", "convert"}), text);
    }
}

}  // namespace
}  // namespace tarvex::test
