// SPDX-License-Identifier: MIT
#include "export/objects/ObjectFile.h"

#include "embedded/TAdmBlobData.h"
#include "export/files/OutputFile.h"
#include "text/CaseFold.h"
#include "text/Format.h"
#include "text/Messages.h"
#include "text/TerminalText.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace vellumo {

namespace {

constexpr std::size_t longestPart = 120; // bytes

// The name without the extension that the file gets anyway.
std::string_view stem(std::string_view name, std::string_view extension)
{
    const auto dot = name.rfind('.');
    const bool isSame = dot != std::string_view::npos && isSameName(name.substr(dot + 1), extension);
    return isSame ? name.substr(0, dot) : name;
}

} // namespace

void FolderNames::reserve(std::string_view name) { m_taken.insert(foldCase(name)); }

std::string FolderNames::nameFor(std::string_view name)
{
    const auto part = fileNamePart(name);
    std::string unique(firstBytes(part, longestPart));
    for (int number = 2; !m_taken.insert(foldCase(unique)).second; ++number) {
        const auto suffix = format(" (%d)", {number});
        unique = std::string(firstBytes(part, longestPart - suffix.size())) + suffix;
    }
    return unique;
}

std::string objectFileName(std::size_t row, const TAdmBlobData& object, std::size_t number)
{
    auto name = number == 1 ? format("%ld", {row}) : format("%ld.%ld", {row, number});
    const auto& extension = object.fileExtension();
    if (const auto stored = stem(object.storedName(), extension); !stored.empty()) name += '-' + fileNamePart(stored);
    const std::string ending(firstBytes(objectFileEnding(object), longestPart / 2));
    return std::string(firstBytes(name, longestPart - ending.size())) + ending;
}

std::string fileNamePart(std::string_view text)
{
    auto part = cleanedText(text, R"(/\:*?"<>|)", '_');
    if (part.find_first_not_of('.') == std::string::npos) part.assign(std::max<std::size_t>(part.size(), 1), '_');
    return part;
}

std::string objectFileEnding(const TAdmBlobData& object)
{
    const auto& extension = object.fileExtension();
    return object.fileEnding(extension.empty() ? std::string() : fileNamePart(extension));
}

bool isDatabase(const std::string& path, const std::string& databasePath)
{
    std::error_code error;
    return std::filesystem::equivalent(path, databasePath, error);
}

std::string isDatabaseText() { return localized("it is the database itself"); }

bool writeObjectFile(const TAdmBlobData& object, const std::string& path, const std::string& databasePath)
{
    return !objectFileFailure(object, path, databasePath);
}

std::optional<std::string> objectFileFailure(
    const TAdmBlobData& object, const std::string& path, const std::string& databasePath)
{
    if (isDatabase(path, databasePath)) return isDatabaseText();
    OutputFile out;
    if (out.open(path)) {
        out.write({reinterpret_cast<const char*>(object.data().data()), object.data().size()});
        if (out.close()) return std::nullopt;
    }
    return out.failureReason();
}

} // namespace vellumo
