// SPDX-License-Identifier: MIT
#include "Program.h"
#include "samples/Damage.h"
#include "samples/DatabaseWriter.h"
#include "samples/OleObjects.h"
#include "support/ProgramRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <fstream>
#include <limits>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>

namespace vellumo {
namespace {

using samples::ColumnType;
using test::CommandResult;
using test::Program;
using ::testing::HasSubstr;

// Waits until the program's handler for a signal, which works once, was called.
void waitUntilHandled(pid_t process, int signal)
{
    const auto statusPath = "/proc/" + std::to_string(process) + "/status";
    for (std::uint64_t caught = ~std::uint64_t{0}; (caught >> (signal - 1) & 1) != 0;) {
        std::ifstream status(statusPath);
        for (std::string line; std::getline(status, line);)
            if (line.starts_with("SigCgt:")) caught = std::stoull(line.substr(7), nullptr, 16);
        if (!status.eof()) FAIL() << "The program is gone.";
        std::this_thread::yield();
    }
}

// The export hangs in a pipe until it is read: the interruption comes while a table is being written.
TEST_F(Program, InterruptionEndsTheExportCleanly)
{
    ASSERT_EQ(::mkfifo(m_out.path("Large.csv").c_str(), 0600), 0);
    const auto program = start({"export", "FILE", "--format", "csv", "--to", m_out.path()});
    std::ifstream pipe(m_out.path("Large.csv"), std::ios::binary);
    pipe.get();
    ::kill(program.process(), SIGINT);
    waitUntilHandled(program.process(), SIGINT);
    std::size_t received = 0;
    while (pipe.get() != std::ifstream::traits_type::eof())
        ++received;
    const auto result = program.wait();
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "Export terminated.\n1 table exported successfully.\n<Large> Failed: Terminated.\n");
    EXPECT_LT(received, 20'000U * 100);
    EXPECT_TRUE(m_out.exists("Items.csv"));
    EXPECT_TRUE(m_out.exists("Large.csv")); // a pipe is not ours to remove
}

TEST_F(Program, ASecondRequestOfAnotherKindEndsItAtOnce)
{
    ASSERT_EQ(::mkfifo(m_out.path("Large.csv").c_str(), 0600), 0);
    const auto program = start({"export", "FILE", "--format", "csv", "--to", m_out.path()});
    std::ifstream pipe(m_out.path("Large.csv"), std::ios::binary);
    pipe.get();
    ::kill(program.process(), SIGHUP);
    waitUntilHandled(program.process(), SIGHUP);
    ::kill(program.process(), SIGTERM);
    pipe.close(); // one that has not ended fails to write
    EXPECT_EQ(program.wait().status, -1);
}

// As under nohup.
TEST_F(Program, WhatIsIgnoredFromTheStartInterruptsNothing)
{
    ASSERT_EQ(::mkfifo(m_out.path("Large.csv").c_str(), 0600), 0);
    const auto program =
        start({"export", "FILE", "--format", "csv", "--to", m_out.path()}, "", [] { std::signal(SIGHUP, SIG_IGN); });
    std::ifstream pipe(m_out.path("Large.csv"), std::ios::binary);
    pipe.get();
    ::kill(program.process(), SIGHUP);
    pipe.ignore(std::numeric_limits<std::streamsize>::max());
    EXPECT_EQ(program.wait().status, 0);
}

TEST_F(Program, FileSizeLimitIsAFailedWrite)
{
    const auto setLimit = [] {
        std::signal(SIGXFSZ, SIG_DFL);
        const rlimit limit{65536, 65536};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    };
    const auto result = run({"export", "FILE", "--format", "csv", "--to", m_out.path()}, "", setLimit);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out,
        "Export finished.\n1 table exported successfully.\n<Large> Failed: Unable to write file. "
            + m_out.path("Large.csv") + ": File too large\n");
    EXPECT_FALSE(m_out.exists("Large.csv"));
    // Half an array would pass for a whole one.
    const auto array = run({"rows", "FILE", "Large", "--format", "json"}, "", setLimit);
    EXPECT_EQ(array.status, 1);
    EXPECT_EQ(array.out, "");
}

TEST_F(Program, LostOutputIsAFailure)
{
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP();
    const std::vector<std::vector<std::string>> commands = {{"--help"}, {"info", "FILE"}, {"rows", "FILE", "Large"},
        {"export", "FILE", "--format", "csv", "--to", m_out.path()}};
    for (const auto& command : commands) {
        const auto result = run(command, "/dev/full");
        EXPECT_EQ(result.status, 1) << command[0];
        EXPECT_THAT(result.err, ::testing::EndsWith("vellumo-cli: Unable to write to standard output.\n"))
            << command[0];
    }
}

// The status of every command, and where it tells what was lost.
TEST_F(Program, DamageIsToldAndHasAStatus)
{
    constexpr std::uint64_t pageSize = 4096;
    const auto path = m_out.path("x.mdb");
    const std::uint8_t noPage[] = {0x77};
    const struct {
        const char* name;
        std::function<bool()> damage;
        const char* line; // how the first of the lines begins
    } damages[] = {
        {"a page of rows",
            [&] { return samples::patchFile(path, s_written.tables[1].dataPages[3] * pageSize, noPage); }, "Large"},
        {"a definition",
            [&] { return samples::patchFile(path, s_written.tables[0].definitionPages[0] * pageSize, noPage); },
            "Items"},
        {"half of the file", [&] { return samples::cutFile(path, s_written.pageCount / 2 * pageSize); }, ""},
    };
    for (const auto& d : damages) {
        std::filesystem::copy_file(database(), path, std::filesystem::copy_options::overwrite_existing);
        ASSERT_TRUE(d.damage()) << d.name;
        const struct {
            std::vector<std::string> arguments;
            std::string CommandResult::*where;
            std::string told;
        } commands[] = {
            {{"info", path}, &CommandResult::out, "\nDamage:\n    "},
            {{"info", path, "--json"}, &CommandResult::out, "\"table\": \""},
            {{"check", path}, &CommandResult::out, ""},
            {{"objects", path, "--to", m_out.path("o")}, &CommandResult::out, "\nDamage:\n    "},
            {{"export", path, "--format", "csv", "--to", m_out.path()}, &CommandResult::out, "\nDamage:\n"},
        };
        for (const auto& c : commands) {
            const auto result = run(c.arguments);
            EXPECT_EQ(result.status, 3) << d.name << ": " << c.arguments[0];
            if (*d.line == '\0' && c.told.ends_with('"')) continue;
            EXPECT_THAT(result.*c.where, HasSubstr(c.told + d.line)) << d.name << ": " << c.arguments[0];
        }
    }
    EXPECT_EQ(run({"check", path}).out.find("No damage"), std::string::npos);
}

TEST_F(Program, ADamagedObjectNeverPassesForAWholeOne)
{
    samples::DatabaseDescription description;
    auto& table = description.tables.emplace_back();
    table.name = "T";
    table.columns = {{.name = "O", .type = ColumnType::Ole}};
    const auto picture = samples::pictureObject(samples::asBytes("BM" + std::string(9000, 'p')));
    table.rows = samples::rowsOf({{samples::LongValue{picture, samples::LongStorage::Chain}}});
    const auto path = m_out.path("x.mdb");
    const auto written = samples::writeDatabase(description, path);
    ASSERT_TRUE(written.ok()) << written.error;
    const auto& place = written.tables[0].longValues[0];
    ASSERT_TRUE(samples::closeChain(path, place) && samples::stateLength(path, place, 99'999));

    auto result = run({"rows", path, "T"});
    EXPECT_EQ(result.status, 3);
    EXPECT_TRUE(result.err.starts_with("vellumo-cli: T, column O, row 1")) << result.err;
    result = run({"blob", path, "T", "O", "1", "--to", "-"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.err, HasSubstr("vellumo-cli: The object is damaged: "));
    EXPECT_EQ(run({"blob", path, "T", "O", "1", "--to", m_out.path()}).status, 3);
    EXPECT_THAT(m_out.names(), ::testing::Contains(::testing::StartsWith("O-1.damaged")));
    EXPECT_EQ(run({"objects", path, "--to", m_out.path("o")}).status, 3);
    EXPECT_THAT(m_out.read("o/manifest.csv").value_or(""), HasSubstr("\r\nT,O,1,T/O/1.damaged"));
    result = run({"export", path, "--format", "sql", "--to", m_out.path()});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.out, HasSubstr("\nT.O: 1 damaged object was left out.\nDamage:\nT, column O, row 1"));
    EXPECT_THAT(m_out.read("T.sql").value_or(""), HasSubstr("VALUES (null);"));
    // What cannot be done comes first.
    EXPECT_EQ(run({"export", path, "--format", "sql", "--to", "/nowhere/at/all"}).status, 1);
}

TEST_F(Program, HelpNamesEveryOption)
{
    EXPECT_THAT(run({"--version"}).out, ::testing::MatchesRegex("vellumo-cli [0-9.]+\n"));
    const auto help = run({"export", "--help"});
    EXPECT_EQ(help.status, 0);
    for (const auto* option : {"--format", "--to", "--table", "--columns", "--search", "--match", "--case-sensitive",
             "--sort", "--single-file", "--no-header", "--field-delimiter", "--record-delimiter", "--decimal-symbol",
             "--encoding", "--dialect", "--schema", "--no-structure", "--no-drop-table", "--no-foreign-keys",
             "--no-indexes", "--no-data"})
        EXPECT_THAT(help.out, HasSubstr(std::string("\n  ") + option + " ")) << option;
}

} // namespace
} // namespace vellumo
