// SPDX-License-Identifier: MIT
#include "browser/StatusTexts.h"

#include "text/Format.h"
#include "text/Messages.h"

namespace vellumo {

namespace {

// The text for exactly one, or the format for any other number.
std::string counted(std::size_t count, const char* one, const char* other)
{
    return count == 1 ? localized(one) : localizedFormat(other, {count});
}

std::string countAndWord(std::size_t count, const char* one, const char* other)
{
    return localizedFormat("%d %@", {count, localized(count == 1 ? one : other)});
}

} // namespace

std::string statusForNoSelection(std::size_t fileCount)
{
    return countAndWord(fileCount, messageKey("file"), messageKey("files"));
}

std::string statusForFile(std::size_t shownFileCount, std::optional<std::size_t> tableCount)
{
    auto text = counted(shownFileCount, messageKey("1 of 1 file"), messageKey("1 of %d files"));
    if (!tableCount) return text;
    return localizedFormat(
        "%@, %@", {text, counted(*tableCount, messageKey("contains 1 table"), messageKey("contains %d tables"))});
}

std::string statusForTable(std::size_t shownTableCount, std::size_t recordCount)
{
    return localizedFormat("%@, %@",
        {counted(shownTableCount, messageKey("1 of 1 table"), messageKey("1 of %d tables")),
            counted(recordCount, messageKey("contains 1 record"), messageKey("contains %d records"))});
}

std::string statusForRecords(std::size_t recordCount, std::size_t selectedCount, std::size_t firstSelected)
{
    if (selectedCount == 0) return countAndWord(recordCount, messageKey("record"), messageKey("records"));
    if (selectedCount == 1) return localizedFormat("Record %d of %d", {firstSelected + 1, recordCount});
    return localizedFormat("%d of %d records", {selectedCount, recordCount});
}

} // namespace vellumo
