// SPDX-License-Identifier: MIT
#include "export/ExcelExport.h"

#include "export/biff8/Workbook.h"
#include "platform/SystemLog.h"
#include "text/Format.h"

#include <cerrno>

namespace vellumo {

using biff8::CellStatus;

ExcelExport::ExcelExport(SystemLog& systemLog)
    : ExcelExport(systemLog, biff8::Workbook::defaultStreamLimit)
{
}

ExcelExport::ExcelExport(SystemLog& systemLog, std::uint64_t streamLimit, CellWatcher watcher)
    : m_systemLog(systemLog)
    , m_streamLimit(streamLimit)
    , m_watcher(std::move(watcher))
{
}

ExcelExport::~ExcelExport() = default;

bool ExcelExport::addSheet(std::string_view name)
{
    if (name.empty()) return false;
    if (!m_workbook) {
        m_workbook = std::make_unique<biff8::Workbook>(m_streamLimit);
        m_workbook->setWatcher(m_watcher);
    }
    if (m_workbook->addSheet(name)) return true;
    if (!m_workbook->hasRoomForSheet()) m_isFull = true;
    return false;
}

std::int32_t ExcelExport::indexOfLastSheet() const
{
    return m_workbook ? static_cast<std::int32_t>(m_workbook->sheetCount()) - 1 : -1;
}

bool ExcelExport::canWrite(std::string_view what)
{
    if (indexOfLastSheet() >= 0) return true;
    const char* missing = m_workbook ? "No worksheet available" : "No workbook available";
    m_systemLog.log(format("Error when writing %@: %@", {what, missing}));
    return false;
}

void ExcelExport::note(CellStatus status, std::string_view what)
{
    if (status == CellStatus::Ok) return;
    // Told once, by whoever asks, not for each of the cells that follow.
    if (status == CellStatus::Full) {
        m_isFull = true;
        return;
    }
    const char* reason = status == CellStatus::BadText ? "Not a text that a cell can hold" : "Not behind the last cell";
    m_systemLog.log(format("Error when writing %@: %@", {what, reason}));
}

void ExcelExport::writeString(std::string_view text, std::uint16_t row, std::uint16_t column)
{
    if (text.empty() || !canWrite("string")) return;
    note(m_workbook->setText(row, column, text), "string");
}

void ExcelExport::writeNumber(double value, std::uint16_t row, std::uint16_t column)
{
    if (canWrite("number")) note(m_workbook->setNumber(row, column, value), "number");
}

void ExcelExport::setBlankForRow(std::uint16_t row, std::uint16_t column)
{
    if (canWrite("null")) note(m_workbook->setBlank(row, column), "null");
}

void ExcelExport::clearSheetsFrom(std::int32_t index)
{
    if (!m_workbook || index < 0) return;
    m_workbook->clearFrom(static_cast<std::size_t>(index));
    m_isFull = false;
}

bool ExcelExport::dumpToFile(const std::string& path, const std::atomic<bool>* stop)
{
    if (!m_workbook) {
        m_systemLog.log("Error when dump file: No workbook available");
        return false;
    }
    const bool isWritten = m_workbook->writeFile(path, stop);
    const int error = errno;
    deleteWorkBook();
    errno = error;
    return isWritten;
}

void ExcelExport::deleteWorkBook()
{
    m_workbook.reset();
    m_isFull = false;
}

} // namespace vellumo
