#include "embedded/OleNative.h"

#include "embedded/OleObject.h"
#include "embedded/OleStream.h"

#include <algorithm>

namespace vellumo {

namespace {

// The kinds of document that Access users embed: the extension of their files, and for those kept inside a compound
// file the name of the stream that is the document. For the others the native data is the document.
struct DocumentClass {
    std::string_view name;
    std::string_view extension;
    std::string_view stream;
};
constexpr DocumentClass documentClasses[] = {
    {"PBrush", "bmp", ""},
    {"Word.Document.8", "doc", ""},
    {"Excel.Sheet.8", "xls", ""},
    {"Excel.Chart.8", "xls", ""},
    {"PowerPoint.Show.8", "ppt", ""},
    {"WordPad.Document.1", "rtf", "Contents"},
    {"Word.Document.12", "docx", "Package"},
    {"Excel.Sheet.12", "xlsx", "Package"},
    {"PowerPoint.Show.12", "pptx", "Package"},
    {"Word.DocumentMacroEnabled.12", "docm", "Package"},
    {"Excel.SheetMacroEnabled.12", "xlsm", "Package"},
    {"PowerPoint.ShowMacroEnabled.12", "pptm", "Package"},
    {"Word.OpenDocumentText.12", "odt", "EmbeddedOdf"},
    {"Excel.OpenDocumentSpreadsheet.12", "ods", "EmbeddedOdf"},
    {"PowerPoint.OpenDocumentPresentation.12", "odp", "EmbeddedOdf"},
};

bool unwrapPackage(Bytes native, OlePayload& out)
{
    const auto package = olePackageFrom(native);
    if (!package) return false;
    // The size is known to be wrong at times; what is there is kept.
    out.data.assign(package->file.begin(), package->file.end());
    const auto label = package->label;
    if (const auto dot = label.rfind('.'); dot != std::string_view::npos) out.extension = label.substr(dot + 1);
    return true;
}

} // namespace

bool unwrapNative(std::string_view className, Bytes native, OlePayload& out)
{
    if (className == "Package") return unwrapPackage(native, out);
    const auto* found = std::find_if(std::begin(documentClasses), std::end(documentClasses),
        [&](const DocumentClass& known) { return known.name == className; });
    const auto isKnown = found != std::end(documentClasses);
    if (isKnown) out.extension = found->extension;
    // A compound file that lacks the document's stream is kept as it is.
    const auto mayHoldStream = isKnown && !found->stream.empty() && isOleStream(native);
    if (mayHoldStream && extractOleStream(native, found->stream, out.data) == 0) return true;
    out.data.assign(native.begin(), native.end());
    return true;
}

} // namespace vellumo
