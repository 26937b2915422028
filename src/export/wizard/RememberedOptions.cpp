// SPDX-License-Identifier: MIT
#include "export/wizard/RememberedOptions.h"

#include "platform/Defaults.h"
#include "text/Format.h"

#include <algorithm>
#include <charconv>

namespace vellumo {

namespace {

template <typename Type> struct Remembered {
    const char* name; // among the settings, behind that of the format
    Type ExportControls::*control;
};

constexpr Remembered<CheckBox> boxes[] = {
    {"exact", &ExportControls::exactCheckBox},
    {"byteOrderMark", &ExportControls::byteOrderMarkCheckBox},
    {"guardFormulas", &ExportControls::guardFormulasCheckBox},
    {"header", &ExportControls::includeColumnHeaderCheckBox},
    {"structure", &ExportControls::exportStructureCheckBox},
    {"dropTable", &ExportControls::includeDropTableCheckBox},
    {"foreignKeys", &ExportControls::includeForeignKeyCheckBox},
    {"indexes", &ExportControls::includeIndexCheckBox},
    {"data", &ExportControls::exportDataCheckBox},
};
constexpr Remembered<Popup> popups[] = {
    {"fieldDelimiter", &ExportControls::fieldDelimiterPopup},
    {"recordDelimiter", &ExportControls::recordDelimiterPopup},
    {"encoding", &ExportControls::encodingPopup},
    {"dialect", &ExportControls::sqlFormatPopup},
};
constexpr Remembered<TextField> fields[] = {
    {"decimalSymbol", &ExportControls::decimalSymbolTextField},
    {"objectsFolder", &ExportControls::objectsFolderTextField},
    {"schema", &ExportControls::schemaNameTextField},
};

std::string keyOf(const FormatInfo& format, const char* name)
{
    return vellumo::format("export.%@.%@", {format.name, name});
}

// nullopt for what is no number.
std::optional<std::uint32_t> tagOf(const std::string& text)
{
    std::uint32_t tag = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), tag);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(tag) : std::nullopt;
}

} // namespace

void rememberOptions(const ExportControls& controls, const FormatInfo& format, Defaults& defaults)
{
    for (const auto& [name, control] : boxes)
        if ((controls.*control).isVisible) defaults.setBoolean(keyOf(format, name), (controls.*control).value);
    for (const auto& [name, control] : popups)
        if ((controls.*control).isVisible)
            defaults.setString(keyOf(format, name), std::to_string((controls.*control).selectedTag));
    for (const auto& [name, control] : fields)
        if ((controls.*control).isVisible) defaults.setString(keyOf(format, name), (controls.*control).value);
}

void recallOptions(const Defaults& defaults, const FormatInfo& format, ExportControls& controls)
{
    for (const auto& [name, control] : boxes)
        if (auto& box = controls.*control; box.isVisible)
            box.value = defaults.boolean(keyOf(format, name)).value_or(box.value);
    for (const auto& [name, control] : popups) {
        auto& popup = controls.*control;
        const auto tag = popup.isVisible ? tagOf(defaults.string(keyOf(format, name)).value_or("")) : std::nullopt;
        if (tag && std::ranges::find(popup.items, *tag, &PopupItem::tag) != popup.items.end()) popup.selectedTag = *tag;
    }
    for (const auto& [name, control] : fields)
        if (auto& field = controls.*control; field.isVisible)
            field.value = defaults.string(keyOf(format, name)).value_or(field.value);
}

} // namespace vellumo
