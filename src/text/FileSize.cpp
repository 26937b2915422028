#include "text/FileSize.h"

#include <fmt/format.h>

namespace vellumo {

std::string formatComputerFileSize(std::uint64_t bytes)
{
    constexpr double unit = 1.0 / 1024;
    constexpr double largestShown = 1023.0;
    const auto wholeKilobytes = bytes / 1024 + (bytes % 1024 != 0 ? 1 : 0);
    const auto kilobytes = static_cast<double>(wholeKilobytes);
    if (kilobytes <= largestShown) return fmt::format("{:.0f} KB", kilobytes);
    const auto megabytes = kilobytes * unit;
    if (megabytes <= largestShown) return fmt::format("{:.1f} MB", megabytes);
    return fmt::format("{:.1f} GB", megabytes * unit);
}

} // namespace vellumo
