// SPDX-License-Identifier: MIT
#include "export/biff8/GlobalRecords.h"

#include "export/biff8/RecordStream.h"

#include <algorithm>
#include <string_view>

namespace vellumo::biff8 {

namespace {

using u8 = std::uint8_t;
using u16 = std::uint16_t;
using u32 = std::uint32_t;

void appendBegin(std::string& bytes, u16 substreamType)
{
    // BIFF8 as Excel 97 wrote it: version, build and year, then the oldest versions that may open it.
    appendRecord(bytes, 0x0809, u16{0x0600}, substreamType, u16{0x0DBB}, u16{0x07CC}, u32{0x41}, u32{6});
}

void appendWriteAccess(std::string& bytes)
{
    constexpr std::size_t dataSize = 112;
    constexpr std::string_view user = "Vellumo";
    std::string padded(user);
    padded.resize(dataSize - 3, ' ');
    appendRecord(bytes, 0x005C, static_cast<u16>(user.size()), u8{0}, std::string_view(padded));
}

void appendTabIds(std::string& bytes, std::size_t sheetCount)
{
    std::string ids;
    for (std::size_t i = 1; i <= sheetCount; ++i)
        append(ids, static_cast<u16>(i));
    appendRecord(bytes, 0x013D, std::string_view(ids));
}

void appendPreamble(std::string& bytes, std::size_t sheetCount)
{
    appendRecord(bytes, 0x00E1, u16{0x04B0}); // interface header
    appendRecord(bytes, 0x00C1, u16{0});
    appendRecord(bytes, 0x00E2);
    appendWriteAccess(bytes);
    appendRecord(bytes, 0x0042, u16{0x04B0}); // texts are UTF-16
    appendRecord(bytes, 0x0161, u16{0});
    appendTabIds(bytes, sheetCount);
}

void appendProtectionAndWindow(std::string& bytes)
{
    for (const u16 id : {0x0019, 0x0012, 0x0013, 0x01AF, 0x01BC})
        appendRecord(bytes, id, u16{0}); // not protected
    // Place and size on the screen, flags, first sheet active and shown, one selected, width of the tabs.
    appendRecord(bytes, 0x003D, u16{0x0168}, u16{0x010E}, u16{0x3A5C}, u16{0x23BE}, u16{0x38}, u16{0}, u16{0}, u16{1},
        u16{0x0258});
    appendRecord(bytes, 0x0040, u16{0}); // no backup file
    appendRecord(bytes, 0x008D, u16{0}); // objects are shown
    appendRecord(bytes, 0x0022, u16{0}); // dates count from 1900
    appendRecord(bytes, 0x000E, u16{1}); // full precision
    appendRecord(bytes, 0x01B7, u16{0});
    appendRecord(bytes, 0x00DA, u16{0});
}

void appendFonts(std::string& bytes)
{
    constexpr std::string_view name = "Arial";
    // The format wants the first five even if they are alike. Height in twentieths of a point, colour, weight.
    for (int i = 0; i < 5; ++i)
        appendRecord(bytes, 0x0031, u16{200}, u16{0}, u16{0x7FFF}, u16{0x0190}, u16{0}, u32{0},
            static_cast<u8>(name.size()), u8{0}, name);
}

void appendNumberFormats(std::string& bytes, bool hasFormats)
{
    constexpr struct {
        u16 id;
        std::string_view text;
    } formats[] = {
        {0x05, R"("$"#,##0_);\("$"#,##0\))"},
        {0x06, R"("$"#,##0_);[Red]\("$"#,##0\))"},
        {0x07, R"("$"#,##0.00_);\("$"#,##0.00\))"},
        {0x08, R"("$"#,##0.00_);[Red]\("$"#,##0.00\))"},
        {0x2A, R"(_("$"* #,##0_);_("$"* \(#,##0\);_("$"* "-"_);_(@_))"},
        {0x29, R"(_(* #,##0_);_(* \(#,##0\);_(* "-"_);_(@_))"},
        {0x2C, R"(_("$"* #,##0.00_);_("$"* \(#,##0.00\);_("$"* "-"??_);_(@_))"},
        {0x2B, R"(_(* #,##0.00_);_(* \(#,##0.00\);_(* "-"??_);_(@_))"},
    };
    const auto add = [&bytes](u16 id, std::string_view text) {
        appendRecord(bytes, 0x041E, id, static_cast<u16>(text.size()), u8{0}, text);
    };
    for (const auto& format : formats)
        add(format.id, format.text);
    for (u16 i = 0; hasFormats && i < cellFormatCodes.size(); ++i)
        add(firstFreeFormat + i, cellFormatCodes[i]);
}

void appendCellFormats(std::string& bytes, bool hasFormats)
{
    for (u16 index = 0; index <= cellFormatIndex; ++index) {
        const bool isStyle = index < cellFormatIndex;
        const u16 kind = isStyle ? 0xFFF5 : 0x0001;
        const u16 unused = index == 0 || !isStyle ? 0 : 0xF400; // groups of attributes that do not count
        appendRecord(bytes, 0x00E0, u16{0}, u16{0}, kind, u16{0x20}, unused, u32{0}, u32{0}, u16{0x20C0});
    }
    constexpr u16 ownNumberFormat = 0x0400; // of the groups of attributes
    for (u16 i = 0; hasFormats && i < cellFormatCodes.size(); ++i)
        appendRecord(bytes, 0x00E0, u16{0}, static_cast<u16>(firstFreeFormat + i), u16{1}, u16{0x20}, ownNumberFormat,
            u32{0}, u32{0}, u16{0x20C0});
    appendRecord(bytes, 0x0293, u16{0x8000}, u8{0}, u8{0xFF}); // the style "Normal"
}

} // namespace

void appendGlobalsHead(std::string& bytes, std::size_t sheetCount, bool hasFormats)
{
    appendBegin(bytes, 0x0005);
    appendPreamble(bytes, sheetCount);
    appendProtectionAndWindow(bytes);
    appendFonts(bytes);
    appendNumberFormats(bytes, hasFormats);
    appendCellFormats(bytes, hasFormats);
    appendRecord(bytes, 0x0160, u16{0}); // formulas do not refer to cells by labels
}

void appendSheetList(std::string& bytes, std::span<const SheetEntry> sheets)
{
    for (const auto& sheet : sheets) {
        const bool isWide =
            std::any_of(sheet.name.begin(), sheet.name.end(), [](char16_t unit) { return unit > 0xFF; });
        std::string name;
        for (const auto unit : sheet.name) {
            name += static_cast<char>(unit & 0xFF);
            if (isWide) name += static_cast<char>(unit >> 8);
        }
        // Visible, a worksheet.
        appendRecord(bytes, 0x0085, sheet.offset, u8{0}, u8{0}, static_cast<u8>(sheet.name.size()),
            static_cast<u8>(isWide), std::string_view(name));
    }
}

void appendCountry(std::string& bytes) { appendRecord(bytes, 0x008C, u16{1}, u16{1}); }

void appendBeginOfSheet(std::string& bytes) { appendBegin(bytes, 0x0010); }

void appendEnd(std::string& bytes) { appendRecord(bytes, 0x000A); }

} // namespace vellumo::biff8
