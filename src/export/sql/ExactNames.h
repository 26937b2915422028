// SPDX-License-Identifier: MIT
#pragma once

#include "export/sql/ExactDialects.h"

#include <set>
#include <string>
#include <string_view>

namespace vellumo {

// Names that have been given already, whatever their letter case.
using TakenNames = std::set<std::string>;

enum class NameUse { Table, Column, Other };

// The name as the server takes it, and as no other one that is taken: cut where it is too long, and then told apart by
// a number made of all of it, so that the same name always becomes the same. It is taken from now on.
[[nodiscard]] std::string exactName(
    std::string_view name, NameUse use, const ExactDialectFacts& facts, TakenNames& taken);

// {name}s of a template with their values; what is not listed stays as it stands.
struct TemplateField {
    std::string_view name; // with its braces
    std::string_view value;
};
[[nodiscard]] std::string fillTemplate(std::string_view text, std::initializer_list<TemplateField> fields);

} // namespace vellumo
