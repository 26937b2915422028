// SPDX-License-Identifier: MIT
#include "embedded/TAdmBlobData.h"

#include "embedded/ContentType.h"
#include "embedded/FileNames.h"
#include "embedded/PayloadText.h"
#include "embedded/TempFile.h"
#include "platform/ImageDecoder.h"
#include "platform/Workspace.h"
#include "text/Ascii.h"
#include "text/Format.h"
#include "text/Messages.h"
#include "text/UTF8.h"

#include <algorithm>
#include <unistd.h>

namespace vellumo {

namespace {

constexpr std::string_view safeExtensions[] = {"txt", "pdf", "ps", "rtf", "doc", "docx", "xls", "xlsx", "ppt", "pptx",
    "mdb", "accdb", "odt", "ods", "odp", "odg", "wav", "mp3", "mpg", "mpeg", "mov", "mid", "midi", "mp4", "wma", "wmv",
    "ogg", "ogv", "snd", "avi", "m4a", "m4v", "264", "mkv", "bmp", "tif", "tiff", "jpg", "png", "gif", "ico", "pcx",
    "raw"};

struct CellFormats {
    const char* withExtension;
    const char* sizeAlone;
};

CellFormats cellFormats(ObjectState state)
{
    switch (state) {
    case ObjectState::Whole: break;
    case ObjectState::Damaged: return {messageKey(".%@ [%@, damaged]"), messageKey("[%@, damaged]")};
    case ObjectState::Linked: return {messageKey(".%@ [%@, linked]"), messageKey("[%@, linked]")};
    }
    return {messageKey(".%@ [%@]"), messageKey("[%@]")};
}

// What comes from a file may hold separators of folders, and characters that are not seen.
bool isFitForAName(const std::string& extension) { return cleanFileName("x." + extension) == "x." + extension; }

// The name without its extension, when that is `extension` (lower case) or one of another known type, whose place it
// takes: "v1.2" is no name of a file of type 2.
std::string_view withoutExtension(std::string_view name, std::string_view extension)
{
    const auto dot = name.rfind('.');
    if (dot == std::string_view::npos) return name;
    const auto own = asciiLower(name.substr(dot + 1));
    return own == extension || isKnownByContent(own) ? name.substr(0, dot) : name;
}

// Whether the bytes alone tell the type.
bool isKnown(const ContentType& type) { return type.kind != ContentKind::Family && type.kind != ContentKind::Unknown; }

} // namespace

TAdmBlobData::TAdmBlobData(std::vector<std::byte> data, std::string fileExtension, ObjectFacts facts)
    : m_data(std::move(data))
    , m_fileExtension(isWellFormedUTF8(fileExtension) ? std::move(fileExtension) : std::string())
    , m_facts(std::move(facts))
{
}

TAdmBlobData::~TAdmBlobData()
{
    if (!m_tmpPath.empty()) ::unlink(m_tmpPath.c_str());
    if (!m_tmpFolder.empty()) ::rmdir(m_tmpFolder.c_str());
}

std::shared_ptr<const Image> TAdmBlobData::image(ImageDecoder& decoder)
{
    if (!m_isImageDecoded) m_image = decoder.decode(m_data);
    m_isImageDecoded = true;
    return m_image;
}

void TAdmBlobData::setStoredName(std::string name, std::string fileExtension)
{
    m_facts.storedName = std::move(name);
    if (m_fileExtension.empty() && isWellFormedUTF8(fileExtension)) m_fileExtension = std::move(fileExtension);
}

std::string TAdmBlobData::cellDescription() const
{
    if (m_furtherFiles.empty()) return descriptionOfOne();
    return localizedFormat("%@ and %ld more", {descriptionOfOne(), static_cast<std::int64_t>(m_furtherFiles.size())});
}

// "report.pdf [12 KB]" for each.
std::string TAdmBlobData::listOfFiles() const
{
    const auto lineOf = [](const TAdmBlobData& file) {
        const auto& name = file.storedName();
        return name.empty() ? file.descriptionOfOne()
                            : name + ' ' + '[' + formatComputerFileSize(file.data().size()) + ']';
    };
    auto lines = lineOf(*this);
    for (const auto& file : m_furtherFiles)
        lines += '\n' + lineOf(*file);
    return lines;
}

std::string TAdmBlobData::descriptionOfOne() const
{
    const auto size = formatComputerFileSize(m_data.size());
    const auto formats = cellFormats(m_facts.state);
    if (m_fileExtension.empty()) return localizedFormat(formats.sizeAlone, {size});
    return localizedFormat(formats.withExtension, {m_fileExtension, size});
}

std::string TAdmBlobData::description() const
{
    auto text = textualDescription();
    return text ? std::move(*text) : localized("[NON-TEXTUAL DATA]");
}

std::optional<std::string> TAdmBlobData::textualDescription() const
{
    if (!m_furtherFiles.empty()) return listOfFiles();
    if (!m_facts.linkTarget.empty()) return localizedFormat("Linked to the file %@", {m_facts.linkTarget});
    return decodeText(m_data);
}

std::shared_ptr<const Image> TAdmBlobData::getFileIcon(Workspace& workspace) const
{
    return workspace.fileTypeIcon(m_fileExtension);
}

const ContentType& TAdmBlobData::contentType()
{
    if (m_contentType == nullptr) m_contentType = &contentTypeOf(m_data);
    return *m_contentType;
}

std::string TAdmBlobData::extensionByContent()
{
    const auto& type = contentType();
    auto stored = isFitForAName(m_fileExtension) ? m_fileExtension : std::string();
    const auto lower = asciiLower(stored);
    if (type.kind == ContentKind::Unknown || goesBy(type, lower)) return stored;
    // A text may be of many types, but no text is a JPEG picture. A file that was called README had no extension.
    const auto agrees = stored.empty() ? !m_facts.storedName.empty() : !isKnownByContent(lower);
    return type.kind == ContentKind::Family && agrees ? stored : std::string(type.extension);
}

std::string TAdmBlobData::fileEnding(std::string_view extension) const
{
    std::string ending = m_facts.state == ObjectState::Damaged ? ".damaged" : "";
    if (!extension.empty()) ending.append(1, '.').append(extension);
    return ending;
}

std::string TAdmBlobData::fileName(std::string_view otherwise)
{
    const auto extension = extensionByContent();
    const auto stem =
        m_facts.storedName.empty() ? otherwise : withoutExtension(m_facts.storedName, asciiLower(extension));
    return std::string(stem) + fileEnding(extension);
}

bool TAdmBlobData::mayBeOpened()
{
    const auto& type = contentType();
    if (type.kind == ContentKind::Program || isProgramExtension(asciiLower(m_fileExtension))) return false;
    const auto isSafe = isSafeFileExtension(extensionByContent());
    // What its bytes do not tell must have been called something.
    return isKnown(type) ? isSafe || isSafeFileExtension(type.extension) : isSafe && !m_fileExtension.empty();
}

std::string TAdmBlobData::createTempFile()
{
    if (!m_tmpPath.empty()) return m_tmpPath;
    if (m_facts.storedName.empty()) return m_tmpPath = writeTempFile(m_data, fileName({}));
    if (m_tmpFolder.empty()) m_tmpFolder = makeTempFolder();
    if (!m_tmpFolder.empty()) m_tmpPath = writeNewFile(m_data, m_tmpFolder + "/" + fileName({}));
    return m_tmpPath;
}

bool isSafeFileExtension(std::string_view extension)
{
    const auto lower = asciiLower(extension);
    return std::find(std::begin(safeExtensions), std::end(safeExtensions), lower) != std::end(safeExtensions);
}

} // namespace vellumo
