// SPDX-License-Identifier: MIT
#include "export/TextFrame.h"

#include "export/ExportOptions.h"
#include "model/TAdmMDBTable.h"
#include "text/Format.h"
#include "text/QuotedText.h"

namespace vellumo {

namespace {

TextFrame delimitedFrame(const TAdmMDBTable& table, const ExportOptions& options)
{
    const std::string delimiter(fieldDelimiterText(options.fieldDelimiter));
    const std::string lineEnd(recordDelimiterText(options.recordDelimiter));
    const auto columnCount = table.columns().size();
    TextFrame frame;
    frame.gaps.resize(columnCount + 1);
    for (std::size_t c = 1; c < columnCount; ++c)
        frame.gaps[c].push_back(delimiter);
    frame.gaps[columnCount].push_back(lineEnd);
    if (!options.includeColumnHeader) return frame;
    for (const auto& column : table.columns()) {
        if (!frame.begin.empty()) frame.begin.push_back(delimiter);
        appendQuoted(column->name(), frame.begin.emplace_back());
    }
    frame.begin.push_back(lineEnd);
    return frame;
}

// Names stand in the tags as they are: the files are meant for tolerant readers.
TextFrame xmlFrame(const TAdmMDBTable& table, const ExportOptions& options)
{
    const std::string lineEnd(recordDelimiterText(options.recordDelimiter));
    const auto columnCount = table.columns().size();
    TextFrame frame;
    frame.begin.push_back(format("<?xml version=\"1.0\"?>%@<RECORDS>%@", {lineEnd, lineEnd}));
    frame.gaps.resize(columnCount + 1);
    frame.gaps[0].push_back(format("<RECORD>%@", {lineEnd}));
    for (std::size_t c = 0; c < columnCount; ++c) {
        const auto& name = table.columns()[c]->name();
        frame.gaps[c].push_back(format("\t<%@>", {name}));
        frame.gaps[c + 1].push_back(format("</%@>%@", {name, lineEnd}));
    }
    frame.gaps[columnCount].insert(frame.gaps[columnCount].end(), {"</RECORD>", lineEnd});
    frame.end.push_back(format("</RECORDS>%@", {lineEnd}));
    return frame;
}

} // namespace

TextFrame textFrame(const TAdmMDBTable& table, const ExportOptions& options)
{
    return options.fileType == ExportFileType::XML ? xmlFrame(table, options) : delimitedFrame(table, options);
}

} // namespace vellumo
