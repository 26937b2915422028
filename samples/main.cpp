// SPDX-License-Identifier: MIT
// vellumo-samples: writes databases to try, test and measure with.

#include "samples/DatabaseWriter.h"
#include "samples/DemoDatabase.h"
#include "samples/SampleDatabases.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <charconv>
#include <cstdio>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace vellumo;
using namespace vellumo::samples;

enum ExitStatus { done = 0, failed = 1, wrongUsage = 2 };

struct Kind {
    std::string_view name;
    const char* summary;
    const char* option; // takes a number; null = none
    std::size_t usualCount;
    std::size_t maxCount;
    std::function<DatabaseDescription(std::size_t)> make;
};

const std::vector<Kind>& kinds()
{
    static const std::vector<Kind> all = {
        {"demo", messageKey("a small shop: customers, orders, products with pictures, documents"), nullptr, 0, 0,
            [](std::size_t) { return demoDatabase(); }},
        {"million", messageKey("one table of 9 columns; --rows N sets the number of rows, 1000000 otherwise"), "--rows",
            1'000'000, 20'000'000, [](std::size_t rows) { return millionDatabase(rows); }},
        {"wide", messageKey("a table of 255 columns, and one with objects of every kind"), nullptr, 0, 0,
            [](std::size_t) { return wideDatabase(); }},
        {"tables", messageKey("small tables; --count N sets their number, 2000 otherwise"), "--count", 2000, 50'000,
            [](std::size_t count) { return manyTablesDatabase(count); }},
        {"types3", messageKey("every type and kind of row, Jet 3 (Access 97)"), nullptr, 0, 0,
            [](std::size_t) { return typesDatabase(JetVersion::Jet3); }},
        {"types4", messageKey("every type and kind of row, Jet 4 (Access 2000 to 2003)"), nullptr, 0, 0,
            [](std::size_t) { return typesDatabase(JetVersion::Jet4); }},
        {"types6", messageKey("every type and kind of row, Access 2019"), nullptr, 0, 0,
            [](std::size_t) { return newerDatabase(); }},
    };
    return all;
}

struct Arguments {
    const Kind* kind = nullptr;
    std::string path;
    std::size_t count = 0;
};

void printHelp()
{
    std::string text = localized("Usage: vellumo-samples KIND OUT.mdb [OPTION]") + "\n\n"
        + localized("Writes a Microsoft Access database of one of these kinds:") + "\n";
    for (const auto& kind : kinds()) {
        const std::string name(kind.name);
        text += "  " + name + std::string(10 - name.size(), ' ') + localized(kind.summary) + "\n";
    }
    std::fputs(text.c_str(), stdout);
}

int complain(ExitStatus status, const std::string& text)
{
    std::fprintf(stderr, "vellumo-samples: %s\n", text.c_str());
    return status;
}

const Kind* kindNamed(std::string_view name)
{
    for (const auto& kind : kinds()) {
        if (kind.name == name) return &kind;
    }
    return nullptr;
}

bool parseCount(const std::string& text, const Kind& kind, std::size_t& count)
{
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    return error == std::errc() && end == text.data() + text.size() && count <= kind.maxCount;
}

// nullopt after `error` was set.
std::optional<Arguments> parse(const std::vector<std::string>& words, std::string& error)
{
    Arguments arguments;
    if (words.empty() || (arguments.kind = kindNamed(words[0])) == nullptr) {
        error = words.empty() ? localized("What to write is missing; try --help.")
                              : localizedFormat("Unknown kind <%@>; try --help.", {words[0]});
        return std::nullopt;
    }
    const auto& kind = *arguments.kind;
    arguments.count = kind.usualCount;
    for (std::size_t i = 1; i < words.size(); ++i) {
        if (kind.option != nullptr && words[i] == kind.option) {
            if (i + 1 == words.size() || !parseCount(words[i + 1], kind, arguments.count)) {
                error = localizedFormat("Option %@ needs a number up to %ld.", {kind.option, kind.maxCount});
                return std::nullopt;
            }
            ++i;
        } else if (words[i].starts_with("-") || !arguments.path.empty()) {
            error = localizedFormat("Unexpected argument <%@>.", {words[i]});
            return std::nullopt;
        } else {
            arguments.path = words[i];
        }
    }
    if (arguments.path.empty()) {
        error = localized("The name of the file to write is missing.");
        return std::nullopt;
    }
    return arguments;
}

int run(const std::vector<std::string>& words)
{
    for (const auto& word : words) {
        if (word == "--help" || word == "-h") {
            printHelp();
            return done;
        }
    }
    std::string error;
    const auto arguments = parse(words, error);
    if (!arguments) return complain(wrongUsage, error);
    const auto result = writeDatabase(arguments->kind->make(arguments->count), arguments->path);
    if (!result.ok()) return complain(failed, result.error);
    return done;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        return run({argv + 1, argv + argc});
    } catch (const std::exception& exception) {
        return complain(failed, exception.what());
    }
}
