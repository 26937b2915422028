// SPDX-License-Identifier: MIT
#include "samples/OleObjects.h"

#include "samples/CompoundFile.h"
#include "samples/Deflate.h"

namespace vellumo::samples {
namespace {

constexpr OleClass classes[] = {
    {"PBrush", "Bitmap Image", "bmp", nullptr},
    {"Word.Document.8", "Microsoft Word Document", "doc", nullptr},
    {"Excel.Sheet.8", "Microsoft Excel Worksheet", "xls", nullptr},
    {"Excel.Chart.8", "Microsoft Excel Chart", "xls", nullptr},
    {"PowerPoint.Show.8", "Microsoft PowerPoint Presentation", "ppt", nullptr},
    {"WordPad.Document.1", "WordPad Document", "rtf", "Contents"},
    {"Word.Document.12", "Microsoft Word Document", "docx", "Package"},
    {"Excel.Sheet.12", "Microsoft Excel Worksheet", "xlsx", "Package"},
    {"PowerPoint.Show.12", "Microsoft PowerPoint Presentation", "pptx", "Package"},
    {"Word.DocumentMacroEnabled.12", "Microsoft Word Macro-Enabled Document", "docm", "Package"},
    {"Excel.SheetMacroEnabled.12", "Microsoft Excel Macro-Enabled Worksheet", "xlsm", "Package"},
    {"PowerPoint.ShowMacroEnabled.12", "Microsoft PowerPoint Macro-Enabled Presentation", "pptm", "Package"},
    {"Word.OpenDocumentText.12", "OpenDocument Text", "odt", "EmbeddedOdf"},
    {"Excel.OpenDocumentSpreadsheet.12", "OpenDocument Spreadsheet", "ods", "EmbeddedOdf"},
    {"PowerPoint.OpenDocumentPresentation.12", "OpenDocument Presentation", "odp", "EmbeddedOdf"},
};

constexpr std::uint16_t accessSignature = 0x1C15;
constexpr std::size_t accessHeaderSize = 20;
constexpr std::uint32_t oleVersion = 0x501;
constexpr std::uint32_t embeddedFormat = 2;

void appendZeroTerminated(Bytes& out, std::string_view text)
{
    appendText(out, text);
    out.push_back(0);
}

} // namespace

std::span<const OleClass> oleClasses() { return classes; }

Bytes oleObject(std::string_view className, std::string_view friendlyName, ByteSpan nativeData)
{
    const auto friendlySize = friendlyName.size() + 1;
    const auto classSize = className.size() + 1;
    Bytes out;
    appendNumber<std::uint16_t>(out, accessSignature);
    appendNumber<std::uint16_t>(out, static_cast<std::uint16_t>(accessHeaderSize + friendlySize + classSize));
    appendNumber<std::uint32_t>(out, embeddedFormat);
    appendNumber<std::uint16_t>(out, static_cast<std::uint16_t>(friendlySize));
    appendNumber<std::uint16_t>(out, static_cast<std::uint16_t>(classSize));
    appendNumber<std::uint16_t>(out, accessHeaderSize);
    appendNumber<std::uint16_t>(out, static_cast<std::uint16_t>(accessHeaderSize + friendlySize));
    appendNumber<std::uint32_t>(out, 0xFFFFFFFF);
    appendZeroTerminated(out, friendlyName);
    appendZeroTerminated(out, className);

    appendNumber<std::uint32_t>(out, oleVersion);
    appendNumber<std::uint32_t>(out, embeddedFormat);
    appendNumber<std::uint32_t>(out, static_cast<std::uint32_t>(classSize));
    appendZeroTerminated(out, className);
    appendNumber<std::uint32_t>(out, 0); // topic name
    appendNumber<std::uint32_t>(out, 0); // item name
    appendNumber<std::uint32_t>(out, static_cast<std::uint32_t>(nativeData.size()));
    appendBytes(out, nativeData);
    appendNumber<std::uint32_t>(out, oleVersion); // no presentation follows
    appendNumber<std::uint32_t>(out, 0);
    return out;
}

Bytes documentObject(const OleClass& oleClass, ByteSpan document)
{
    if (oleClass.stream == nullptr) return oleObject(oleClass.className, oleClass.friendlyName, document);
    const auto container = compoundFile({
        {oleClass.stream, {document.begin(), document.end()}},
        {"\1CompObj", Bytes(76)},
        {"\1Ole", Bytes(20)},
    });
    return oleObject(oleClass.className, oleClass.friendlyName, container);
}

Bytes pictureObject(ByteSpan bmp) { return documentObject(classes[0], bmp); }

Bytes packageData(std::string_view label, std::string_view sourcePath, std::string_view temporaryPath, ByteSpan payload)
{
    Bytes out;
    appendNumber<std::uint16_t>(out, 2);
    appendZeroTerminated(out, label);
    appendZeroTerminated(out, sourcePath);
    appendNumber<std::uint32_t>(out, 0x00030000);
    appendNumber<std::uint32_t>(out, static_cast<std::uint32_t>(temporaryPath.size() + 1));
    appendZeroTerminated(out, temporaryPath);
    appendNumber<std::uint32_t>(out, static_cast<std::uint32_t>(payload.size()));
    appendBytes(out, payload);
    return out;
}

Bytes packageObject(std::string_view label, ByteSpan payload)
{
    const std::string name(label);
    return oleObject("Package", "Package", packageData(label, "C:\\Documents\\" + name, "C:\\Temp\\" + name, payload));
}

Bytes attachmentRecord(std::string_view extension, ByteSpan payload, AttachmentStorage storage)
{
    Bytes record;
    const auto characters = extension.size() + 1;
    appendNumber<std::uint32_t>(record, static_cast<std::uint32_t>(12 + 2 * characters));
    appendNumber<std::uint32_t>(record, 1);
    appendNumber<std::uint32_t>(record, static_cast<std::uint32_t>(characters));
    for (const char letter : extension)
        appendNumber<std::uint16_t>(record, static_cast<std::uint8_t>(letter));
    appendNumber<std::uint16_t>(record, 0);
    appendBytes(record, payload);

    const bool isDeflated = storage == AttachmentStorage::Deflated;
    Bytes out;
    appendNumber<std::uint32_t>(out, isDeflated ? 1 : 0);
    appendNumber<std::uint32_t>(out, static_cast<std::uint32_t>(record.size()));
    appendBytes(out, isDeflated ? zlibStream(record) : record);
    return out;
}

} // namespace vellumo::samples
