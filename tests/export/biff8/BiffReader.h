// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// Reads workbook streams by the published rules, and complains (as a failure of the running test) where one is broken.
// Shares nothing with the writer.
namespace vellumo::test {

struct Record {
    std::uint32_t offset = 0;
    std::uint16_t id = 0;
    std::string data;
};
[[nodiscard]] std::vector<Record> recordsOf(std::string_view stream);

// Little-endian, of `size` bytes at `offset`.
[[nodiscard]] std::uint64_t numberAt(std::string_view bytes, std::size_t offset, std::size_t size);

struct SharedString {
    std::string text;         // UTF-8
    std::uint32_t offset = 0; // in the stream
    std::uint32_t offsetInRecord = 0;
};
[[nodiscard]] std::vector<SharedString> sharedStringsOf(const std::vector<Record>& records);

struct ReadSheet {
    std::string name;
    // By row and column: "blank", "#NUM!", a number as "%.17g", or a text in single quotes.
    std::map<std::pair<unsigned, unsigned>, std::string> cells;
};
[[nodiscard]] std::vector<ReadSheet> sheetsOf(std::string_view stream);

// The workbook stream of a compound file; "" when there is none.
[[nodiscard]] std::string workbookStreamOf(const std::string& path);

} // namespace vellumo::test
