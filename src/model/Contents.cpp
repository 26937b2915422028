// SPDX-License-Identifier: MIT
#include "model/Contents.h"

#include "text/Messages.h"

namespace vellumo {

namespace {

struct KindTexts {
    std::string_view name;
    const char* key; // of the message table
};

// In the order of the kinds.
constexpr KindTexts queryKinds[] = {
    {"select", messageKey("Select Query")},
    {"makeTable", messageKey("Make-Table Query")},
    {"append", messageKey("Append Query")},
    {"update", messageKey("Update Query")},
    {"delete", messageKey("Delete Query")},
    {"crosstab", messageKey("Crosstab Query")},
    {"dataDefinition", messageKey("Data-Definition Query")},
    {"passThrough", messageKey("Pass-Through Query")},
    {"union", messageKey("Union Query")},
};

constexpr KindTexts objectKinds[] = {
    {"form", messageKey("Form")},
    {"report", messageKey("Report")},
    {"macro", messageKey("Macro")},
    {"module", messageKey("Module")},
    {"dataAccessPage", messageKey("Data Access Page")},
};

const KindTexts& textsOf(QueryKind kind) { return queryKinds[static_cast<std::size_t>(kind) - 1]; }
const KindTexts& textsOf(ObjectKind kind) { return objectKinds[static_cast<std::size_t>(kind)]; }

} // namespace

std::string_view queryKindName(QueryKind kind) { return textsOf(kind).name; }
std::string_view objectKindName(ObjectKind kind) { return textsOf(kind).name; }
std::string queryKindText(QueryKind kind) { return localized(textsOf(kind).key); }
std::string objectKindText(ObjectKind kind) { return localized(textsOf(kind).key); }

} // namespace vellumo
