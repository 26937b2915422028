#pragma once

#include <cstdint>
#include <span>

namespace vellumo::jet {

// The pages of an open database beside the one whose rows are being read. One thread only.
class PageFile {
public:
    virtual ~PageFile() = default;
    // The row that a pointer (page << 8 | row number) leads to, without its flags; empty when there is none. Valid
    // until the next call.
    [[nodiscard]] virtual std::span<const std::uint8_t> row(std::uint32_t pointer) = 0;
};

} // namespace vellumo::jet
