// SPDX-License-Identifier: MIT
#include "platform/FileFacts.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace vellumo {

namespace {

Timestamp timestamp(const struct statx_timestamp& time)
{
    return Timestamp(std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec));
}

} // namespace

std::optional<FileFacts> SystemFileFacts::facts(const std::string& path) const
{
    struct statx found { };
    if (statx(AT_FDCWD, path.c_str(), 0, STATX_BASIC_STATS | STATX_BTIME, &found) != 0) return std::nullopt;
    FileFacts facts;
    facts.size = found.stx_size;
    facts.created = timestamp((found.stx_mask & STATX_BTIME) != 0 ? found.stx_btime : found.stx_ctime);
    facts.modified = timestamp(found.stx_mtime);
    facts.accessed = timestamp(found.stx_atime);
    return facts;
}

} // namespace vellumo
