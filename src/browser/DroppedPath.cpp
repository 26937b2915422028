// SPDX-License-Identifier: MIT
#include "browser/DroppedPath.h"

#include "model/TAdmMDBFile.h"

#include <algorithm>

namespace vellumo {

namespace {

// ASCII letters only: the two extensions have no others.
bool equalIgnoringCase(std::string_view text, std::string_view lowerCase)
{
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::equal(
        text.begin(), text.end(), lowerCase.begin(), lowerCase.end(), [&](char a, char b) { return lower(a) == b; });
}

} // namespace

bool isDatabasePath(std::string_view path)
{
    TAdmMDBFile file;
    file.setFullPath(path);
    return equalIgnoringCase(file.fileExtension(), "mdb") || equalIgnoringCase(file.fileExtension(), "accdb");
}

std::string pathOutsideContainer(std::string_view path, std::string_view homeFolder)
{
    const auto homeStart = homeFolder.empty() ? std::string_view::npos : path.find(homeFolder);
    const auto container = homeFolder.find("/Library/Containers/");
    std::string mapped(path);
    if (homeStart == std::string_view::npos || container == std::string_view::npos) return mapped;
    return mapped.replace(homeStart, homeFolder.size(), homeFolder.substr(0, container));
}

} // namespace vellumo
