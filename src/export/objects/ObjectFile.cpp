#include "export/objects/ObjectFile.h"

#include "embedded/TAdmBlobData.h"
#include "export/files/OutputFile.h"
#include "text/Messages.h"
#include "text/TerminalText.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace vellumo {

std::string fileNamePart(std::string_view text)
{
    auto part = cleanedText(text, R"(/\:*?"<>|)", '_');
    if (part.find_first_not_of('.') == std::string::npos) part.assign(std::max<std::size_t>(part.size(), 1), '_');
    return part;
}

std::string objectFileEnding(const TAdmBlobData& object)
{
    const std::string mark = object.state() == ObjectState::Damaged ? ".damaged" : "";
    return object.fileExtension().empty() ? mark : mark + '.' + fileNamePart(object.fileExtension());
}

bool isDatabase(const std::string& path, const std::string& databasePath)
{
    std::error_code error;
    return std::filesystem::equivalent(path, databasePath, error);
}

std::string isDatabaseText() { return localized("it is the database itself"); }

bool writeObjectFile(const TAdmBlobData& object, const std::string& path, const std::string& databasePath)
{
    return !objectFileFailure(object, path, databasePath);
}

std::optional<std::string> objectFileFailure(
    const TAdmBlobData& object, const std::string& path, const std::string& databasePath)
{
    if (isDatabase(path, databasePath)) return isDatabaseText();
    OutputFile out;
    if (out.open(path)) {
        out.write({reinterpret_cast<const char*>(object.data().data()), object.data().size()});
        if (out.close()) return std::nullopt;
    }
    return out.failureReason();
}

} // namespace vellumo
