// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vellumo {

// The user's settings, kept between runs. Main thread only.
class Defaults {
public:
    virtual ~Defaults() = default;
    // nullopt for a key that was never set (or holds something of another type).
    [[nodiscard]] virtual std::optional<std::string> string(std::string_view key) const = 0;
    [[nodiscard]] virtual std::optional<bool> boolean(std::string_view key) const = 0;
    virtual void setString(std::string_view key, std::string_view value) = 0;
    virtual void setBoolean(std::string_view key, bool value) = 0;
    // Writes what was set to the store. False when that failed; the values stay set for this run.
    virtual bool synchronize() = 0;
};

} // namespace vellumo
