#include "browser/DamageDetails.h"

#include "browser/DamageTexts.h"
#include "export/files/OutputFile.h"
#include "export/objects/ObjectFile.h"
#include "text/Format.h"
#include "text/Messages.h"
#include "text/TerminalText.h"

#include <array>

namespace vellumo {

namespace {

std::string number(std::uint64_t value) { return value == 0 ? std::string() : std::to_string(value); }

// "" when it was written, else the reason. The database itself is never written to.
std::string writeText(const std::string& text, const std::string& path, const std::string& databasePath)
{
    if (isDatabase(path, databasePath)) return isDatabaseText();
    OutputFile out;
    if (out.open(path)) {
        out.write(text);
        if (out.close()) return {};
    }
    return out.failureReason();
}

} // namespace

DamageDetails::DamageDetails(const TAdmMDBFile& file, const DesktopPorts& desktop)
    : m_desktop(desktop)
    , m_records(file.damage().records().begin(), file.damage().records().end())
    , m_summary(damageOf(file))
    , m_title(localizedFormat("Damage of %@", {file.name()}))
    , m_databasePath(file.fullPath())
{
}

std::string DamageDetails::header(Column column)
{
    constexpr std::array keys = {messageKey("What"), messageKey("Table"), messageKey("Column"), messageKey("Row"),
        messageKey("Page"), messageKey("Count")};
    static_assert(keys.size() == columnCount);
    return localized(keys[static_cast<std::size_t>(column)]);
}

std::string DamageDetails::text(std::size_t row, Column column) const
{
    const auto& record = m_records[row];
    switch (column) {
    case Column::What: return damageText({.kind = record.kind, .count = record.count});
    case Column::Table: return escapedText(record.table);
    case Column::Column: return escapedText(record.column);
    case Column::Row: return number(record.row);
    case Column::Page: return number(record.page);
    case Column::Count: break;
    }
    return number(record.count);
}

std::string DamageDetails::lines() const
{
    std::string text;
    for (const auto& record : m_records)
        text += escapedText(damageText(record)) + '\n';
    return text;
}

void DamageDetails::copy() const { m_desktop.pasteboard.setText(lines()); }

void DamageDetails::save() const
{
    const auto text = m_databasePath + '\n' + m_summary + "\n\n" + lines();
    const auto database = m_databasePath;
    auto& alerts = m_desktop.alerts;
    const auto path = m_desktop.filePanels.saveFile("txt", fileNamePart(m_title));
    if (!path) return;
    const auto reason = writeText(text, *path, database);
    if (reason.empty()) return;
    alerts.show({localized("Error"), localizedFormat("File (%@) cannot be written", {*path}), Alert::Style::Modal,
        localizedFormat("Reason: %@.", {reason})});
}

} // namespace vellumo
