// SPDX-License-Identifier: MIT
#include "adapters/IniDefaults.h"

#include "adapters/Files.h"
#include "adapters/LockFile.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace vellumo {
namespace {

using namespace test;

// The library is free with empty lines.
std::string withoutEmptyLines(std::string text)
{
    for (auto found = text.find("\n\n"); found != std::string::npos; found = text.find("\n\n"))
        text.erase(found, 1);
    return text;
}

TEST(IniDefaults, KeepsWhatWasSetBetweenRuns)
{
    const TempFolder folder;
    const auto path = folder.path("new/folder/vellumo.ini");
    const std::string texts[] = {"/home/a b/Größe", "", " leading", "back\\slash; two\nlines", "true"};
    {
        IniDefaults defaults(path);
        EXPECT_EQ(defaults.boolean("jumpBarShown"), std::nullopt);
        defaults.setBoolean("jumpBarShown", true);
        defaults.setBoolean("textViewShown", false);
        for (std::size_t i = 0; i < std::size(texts); ++i)
            defaults.setString("text" + std::to_string(i), texts[i]);
        EXPECT_EQ(defaults.string("text3"), texts[3]);
        EXPECT_FALSE(std::filesystem::exists(path));
        EXPECT_TRUE(defaults.synchronize());
    }
    EXPECT_TRUE(isPrivate(path));
    const IniDefaults defaults(path);
    EXPECT_EQ(defaults.boolean("jumpBarShown"), true);
    EXPECT_EQ(defaults.boolean("textViewShown"), false);
    EXPECT_EQ(defaults.boolean("text0"), std::nullopt);
    EXPECT_EQ(defaults.string("missing"), std::nullopt);
    for (std::size_t i = 0; i < std::size(texts); ++i)
        EXPECT_EQ(defaults.string("text" + std::to_string(i)), texts[i]) << i;
}

TEST(IniDefaults, LeavesWhatOthersWrote)
{
    const TempFolder folder;
    const auto path = folder.path("vellumo.ini");
    folder.write("vellumo.ini", "# by hand\n[General]\nkept=a\\nb\njumpBarShown=false\n\n[Later]\nkey[de]=Wert\n");
    IniDefaults first(path);
    IniDefaults second(path);
    first.setBoolean("jumpBarShown", true);
    second.setString("exportFilePath", "/tmp");
    EXPECT_TRUE(first.synchronize());
    EXPECT_TRUE(second.synchronize());
    EXPECT_EQ(withoutEmptyLines(readFile(path)),
        "# by "
        "hand\n[General]\nkept=a\\nb\njumpBarShown=true\nversion=1\nexportFilePath=/tmp\n[Later]\nkey[de]=Wert\n");
    EXPECT_EQ(second.boolean("jumpBarShown"), true);
}

TEST(IniDefaults, NeverOverwritesWhatItDoesNotUnderstand)
{
    const struct {
        const char* name;
        const char* content;
        std::optional<bool> shown; // what is read all the same
    } cases[] = {
        {"no INI file", "jumpBarShown\nwithout a group\n", std::nullopt},
        {"binary", "[General]\n\xFF\xFE\n", std::nullopt},
        {"a later version's", "[General]\nversion=2\njumpBarShown=false\n", false},
    };
    for (const auto& test : cases) {
        const TempFolder folder;
        const auto path = folder.path("vellumo.ini");
        folder.write("vellumo.ini", test.content);
        IniDefaults defaults(path);
        EXPECT_EQ(defaults.boolean("jumpBarShown"), test.shown) << test.name;
        defaults.setBoolean("jumpBarShown", true);
        EXPECT_FALSE(defaults.synchronize()) << test.name;
        EXPECT_EQ(readFile(path), test.content) << test.name;
        EXPECT_EQ(defaults.boolean("jumpBarShown"), true) << test.name;
    }
}

TEST(IniDefaults, ReplacesTheFileBehindASymbolicLink)
{
    const TempFolder folder;
    const auto path = folder.path("vellumo.ini");
    folder.write("real.ini", "");
    std::filesystem::create_symlink(folder.path("real.ini"), path);
    IniDefaults defaults(path);
    defaults.setBoolean("a", true);
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_EQ(withoutEmptyLines(readFile(folder.path("real.ini"))), "[General]\nversion=1\na=true\n");
}

} // namespace
} // namespace vellumo
