// SPDX-License-Identifier: MIT
#include "fuzz/PageInput.h"
#include "jet/PageCipher.h"

#include <algorithm>
#include <string_view>

namespace {

using namespace vellumo;
using namespace vellumo::jet;

constexpr std::size_t pageSize = 4096;
constexpr std::size_t lengthOffset = 0x299;

// Making a key takes time on purpose, and the more the larger this number is.
bool isSlow(std::string_view description)
{
    constexpr std::string_view spins = "spinCount=\"";
    constexpr std::size_t mostDigits = 3;
    for (auto at = description.find(spins); at != std::string_view::npos; at = description.find(spins, at + 1)) {
        const auto digits = description.substr(at + spins.size());
        if (std::min(digits.find_first_not_of("0123456789"), digits.size()) > mostDigits) return true;
    }
    return false;
}

} // namespace

// The description of an encryption as it stands in the first page, behind its length.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size > pageSize - lengthOffset - 2 || isSlow({reinterpret_cast<const char*>(data), size})) return 0;
    std::vector<std::uint8_t> page(pageSize);
    page[lengthOffset] = static_cast<std::uint8_t>(size);
    page[lengthOffset + 1] = static_cast<std::uint8_t>(size >> 8);
    std::copy_n(data, size, page.begin() + lengthOffset + 2);
    OpenFailure failure{};
    require(!openCipher(page, 1, std::nullopt, failure));
    require(failure == OpenFailure::NeedsPassword || failure == OpenFailure::UnknownEncryption);
    const auto cipher = openCipher(page, 1, "Sesam", failure);
    require(cipher || failure == OpenFailure::WrongPassword || failure == OpenFailure::UnknownEncryption);
    if (!cipher) return 0;
    const auto other = cipher->clone();
    auto copy = page;
    require(cipher->decrypt(1, page) == other->decrypt(1, copy) && page == copy);
    return 0;
}
