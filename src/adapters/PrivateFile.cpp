// SPDX-License-Identifier: MIT
#include "adapters/PrivateFile.h"

#include "adapters/GlibOwned.h"

#include <filesystem>
#include <glib.h>
#include <glib/gstdio.h>

namespace vellumo {

std::optional<std::string> readSmallFile(const std::string& path)
{
    char* text = nullptr;
    gsize length = 0;
    if (g_file_get_contents(path.c_str(), &text, &length, nullptr) == FALSE) return std::nullopt;
    const GlibText owner(text);
    return std::string(text, length);
}

bool mayExist(const std::string& path)
{
    std::error_code failed;
    return std::filesystem::status(path, failed).type() != std::filesystem::file_type::not_found;
}

bool makeFolderFor(const std::string& path)
{
    const auto folder = std::filesystem::path(path).parent_path();
    return folder.empty() || g_mkdir_with_parents(folder.c_str(), 0700) == 0;
}

bool writePrivateFile(const std::string& path, std::string_view content)
{
    if (!makeFolderFor(path)) return false;
    std::error_code failed;
    const auto file = std::filesystem::canonical(path, failed);
    return g_file_set_contents_full(failed ? path.c_str() : file.c_str(), content.data(),
               static_cast<gssize>(content.size()), G_FILE_SET_CONTENTS_CONSISTENT, 0600, nullptr)
        != FALSE;
}

} // namespace vellumo
