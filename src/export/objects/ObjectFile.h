// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace vellumo {

class TAdmBlobData;

// Names for folders side by side: no two that some file system would take for the same.
class FolderNames {
public:
    // The name is not given out.
    void reserve(std::string_view name);
    // A folder's name for a name from a database: cleaned, of at most 120 bytes, with " (2)" and so on behind it when
    // another has it already.
    [[nodiscard]] std::string nameFor(std::string_view name);

private:
    std::set<std::string> m_taken; // letter case folded
};

// The name of an object's file in the folder of its column: "ROW[-NAME].EXT", of at most 120 bytes. `row` counts
// from 1.
[[nodiscard]] std::string objectFileName(std::size_t row, const TAdmBlobData& object, std::size_t number = 1);

class TAdmBlobData;

// The text as one part of a path: what names and types come from a database may hold anything. Characters that some
// file system or terminal takes for more than a letter become "_"; the part is never "", "." or "..".
[[nodiscard]] std::string fileNamePart(std::string_view text);

// The object's extension as it ends a file name: ".jpg", "" without one. What is left of a damaged object never looks
// like a whole file: ".damaged.jpg".
[[nodiscard]] std::string objectFileEnding(const TAdmBlobData& object);

// Writes the object's bytes as a file. False when that failed, or when `path` leads to the database itself, which is
// never written to. Then an older file is as it was.
[[nodiscard]] bool writeObjectFile(
    const TAdmBlobData& object, const std::string& path, const std::string& databasePath);
// The same: nullopt when it was written, else the reason (localised), as the end of a sentence.
[[nodiscard]] std::optional<std::string> objectFileFailure(
    const TAdmBlobData& object, const std::string& path, const std::string& databasePath);

// Whether the path leads to the database, by whatever name.
[[nodiscard]] bool isDatabase(const std::string& path, const std::string& databasePath);
// What the reason is then (localised).
[[nodiscard]] std::string isDatabaseText();

} // namespace vellumo
