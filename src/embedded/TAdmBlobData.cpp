#include "embedded/TAdmBlobData.h"

#include "embedded/PayloadText.h"
#include "embedded/TempFile.h"
#include "platform/ImageDecoder.h"
#include "platform/Workspace.h"
#include "text/FileSize.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <algorithm>
#include <unistd.h>

namespace vellumo {

namespace {

// Files that cannot run code by being opened.
constexpr std::string_view safeExtensions[] = {"txt", "pdf", "ps", "rtf", "doc", "docx", "xls", "xlsx", "ppt", "pptx",
    "mdb", "accdb", "odt", "ods", "odp", "odg", "wav", "mp3", "mpg", "mpeg", "mov", "mid", "midi", "mp4", "wma", "wmv",
    "ogg", "ogv", "snd", "avi", "m4a", "m4v", "264", "mkv", "bmp", "tif", "tiff", "jpg", "png", "gif", "ico", "pcx",
    "raw"};

char asciiLower(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

} // namespace

TAdmBlobData::TAdmBlobData(std::vector<std::byte> data, std::string fileExtension, ObjectFacts facts)
    : m_data(std::move(data))
    , m_fileExtension(isUtf8(fileExtension) ? std::move(fileExtension) : std::string())
    , m_facts(std::move(facts))
{
}

TAdmBlobData::~TAdmBlobData()
{
    if (!m_tmpPath.empty()) ::unlink(m_tmpPath.c_str());
}

std::shared_ptr<const Image> TAdmBlobData::image(ImageDecoder& decoder)
{
    if (!m_isImageDecoded) m_image = decoder.decode(m_data);
    m_isImageDecoded = true;
    return m_image;
}

std::string TAdmBlobData::cellDescription() const
{
    const auto size = formatComputerFileSize(m_data.size());
    if (m_fileExtension.empty()) return localizedFormat("[%@]", {size});
    return localizedFormat(".%@ [%@]", {m_fileExtension, size});
}

std::string TAdmBlobData::description() const
{
    auto text = decodeText(m_data);
    return text ? std::move(*text) : localized("[NON-TEXTUAL DATA]");
}

std::shared_ptr<const Image> TAdmBlobData::getFileIcon(Workspace& workspace) const
{
    return workspace.fileTypeIcon(m_fileExtension);
}

std::string TAdmBlobData::createTempFile()
{
    if (m_tmpPath.empty()) m_tmpPath = writeTempFile(m_data, m_fileExtension.empty() ? "" : "." + m_fileExtension);
    return m_tmpPath;
}

bool isSafeFileExtension(std::string_view extension)
{
    std::string lower(extension);
    std::transform(lower.begin(), lower.end(), lower.begin(), asciiLower);
    return std::find(std::begin(safeExtensions), std::end(safeExtensions), lower) != std::end(safeExtensions);
}

} // namespace vellumo
