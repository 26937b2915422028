#include "export/Replacement.h"

#include <climits>
#include <cstdio>
#include <filesystem>
#include <unistd.h>

namespace vellumo {

namespace {

constexpr const char* partSuffix = ".part";
constexpr std::size_t longestName = NAME_MAX - 5;

std::string partPath(const std::filesystem::path& target)
{
    return target.parent_path() / (target.filename().native().substr(0, longestName) + partSuffix);
}

} // namespace

std::optional<Replacement> Replacement::of(const std::string& path)
{
    std::error_code error;
    const auto named = std::filesystem::symlink_status(path, error);
    if (!path.empty() && named.type() == std::filesystem::file_type::not_found)
        return Replacement{path, partPath(path)};
    const auto target = std::filesystem::canonical(path, error);
    if (error || !std::filesystem::is_regular_file(target, error)) return {};
    return Replacement{target, partPath(target)};
}

bool Replacement::finish() const
{
    if (std::rename(part.c_str(), target.c_str()) == 0) return true;
    discard();
    return false;
}

void Replacement::discard() const { ::unlink(part.c_str()); }

} // namespace vellumo
