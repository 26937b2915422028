// SPDX-License-Identifier: MIT
#include "browser/HorspoolStringSearcher.h"

namespace vellumo {

std::optional<HorspoolStringSearcher> HorspoolStringSearcher::initWithCString(
    std::string_view bytes, std::string& assertion)
{
    if (bytes.size() >= 256) {
        assertion = "Search target two long in algorithm -- initWithCharString:length:";
        return std::nullopt;
    }
    HorspoolStringSearcher searcher;
    searcher.pString = bytes;
    searcher.iLength = static_cast<std::uint8_t>(bytes.size());
    searcher.bsShift.fill(searcher.iLength);
    for (std::size_t i = 0; i + 1 < bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if (byte >= 0x80) {
            assertion = "Search target contain character that is out-of-bound";
            return std::nullopt;
        }
        searcher.bsShift[byte] = static_cast<std::uint8_t>(bytes.size() - 1 - i);
    }
    return searcher;
}

const char* HorspoolStringSearcher::findWithinCharString(std::string_view text) const
{
    if (iLength == 0) return nullptr;
    std::size_t last = iLength - 1U; // where the pattern's last byte would stand
    while (last < text.size()) {
        const auto start = last + 1 - iLength;
        if (text[last] == pString.back() && text.substr(start, iLength) == pString) return text.data() + start;
        const auto byte = static_cast<unsigned char>(text[last]);
        last += byte < 0x80 ? bsShift[byte] : iLength;
    }
    return nullptr;
}

} // namespace vellumo
