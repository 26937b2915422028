#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace vellumo {

using SQLDateText = std::array<char, 19>;

// "yyyy-MM-dd HH:mm:ss" of a date cell, "MM/dd/yyyy HH:mm:ss"; nullopt for a text of any other form and for a date that
// the calendar does not have.
[[nodiscard]] std::optional<SQLDateText> sqlDateText(std::string_view cell);

} // namespace vellumo
