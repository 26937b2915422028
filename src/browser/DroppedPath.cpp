// SPDX-License-Identifier: MIT
#include "browser/DroppedPath.h"

#include "model/TAdmMDBFile.h"
#include "text/Ascii.h"

namespace vellumo {

bool isDatabasePath(std::string_view path)
{
    TAdmMDBFile file;
    file.setFullPath(path);
    const auto extension = asciiLower(file.fileExtension());
    return extension == "mdb" || extension == "accdb";
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
