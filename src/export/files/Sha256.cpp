// SPDX-License-Identifier: MIT
#include "export/files/Sha256.h"

#include <array>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gcrypt.h>

namespace vellumo {

namespace {

constexpr std::size_t digestSize = 32;

// The library wants to be asked for its version before anything else.
void startLibrary()
{
    static const bool isStarted = [] {
        gcry_check_version(nullptr);
        gcry_control(GCRYCTL_DISABLE_SECMEM, 0);
        gcry_control(GCRYCTL_INITIALIZATION_FINISHED, 0);
        return true;
    }();
    static_cast<void>(isStarted);
}

} // namespace

std::string sha256(std::span<const std::byte> bytes)
{
    startLibrary();
    std::array<unsigned char, digestSize> digest{};
    gcry_md_hash_buffer(GCRY_MD_SHA256, digest.data(), bytes.data(), bytes.size());
    return fmt::format("{:02x}", fmt::join(digest, ""));
}

} // namespace vellumo
