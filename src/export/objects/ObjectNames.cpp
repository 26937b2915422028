#include "export/objects/ObjectNames.h"

#include "embedded/TAdmBlobData.h"
#include "export/objects/ObjectFile.h"
#include "text/CaseFold.h"
#include "text/Format.h"
#include "text/TerminalText.h"

namespace vellumo {

namespace {

constexpr std::size_t longestPart = 120; // bytes

// The name without the extension that the file gets anyway.
std::string_view stem(std::string_view name, std::string_view extension)
{
    const auto dot = name.rfind('.');
    const bool isSame = dot != std::string_view::npos && foldCase(name.substr(dot + 1)) == foldCase(extension);
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

std::string objectFileName(std::size_t row, const TAdmBlobData& object)
{
    auto name = format("%ld", {row});
    const auto& extension = object.fileExtension();
    if (const auto stored = stem(object.storedName(), extension); !stored.empty()) name += '-' + fileNamePart(stored);
    const std::string ending(firstBytes(objectFileEnding(object), longestPart / 2));
    return std::string(firstBytes(name, longestPart - ending.size())) + ending;
}

} // namespace vellumo
