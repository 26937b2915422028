// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace vellumo {

// Why a file was not opened.
enum class OpenFailure : std::uint8_t {
    Missing,
    NoPermission,
    NotAFile,     // a folder or a device
    NotADatabase, // no Access database, or one whose first page is gone
    NewerFormat,  // Access 2007 to 2019
    UnknownNewer, // newer than any known format
    NeedsPassword,
    WrongPassword,
    UnknownEncryption,
    Unreadable, // the medium gives errors
    TooLittleMemory,
    Stopped, // by the user: nothing to complain about
};

// The reason as the end of a sentence (localised), without a full stop: "there is no such file".
[[nodiscard]] std::string openFailureText(OpenFailure failure);
// What the user can do about it, a whole sentence (localised); "" where there is nothing to advise.
[[nodiscard]] std::string openFailureAdvice(OpenFailure failure);

} // namespace vellumo
