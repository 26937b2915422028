#include "export/ObjectFile.h"

#include "embedded/TAdmBlobData.h"
#include "export/files/OutputFile.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace vellumo {

std::string fileNamePart(std::string text)
{
    std::ranges::replace_if(
        text, [](char c) { return c == '/' || static_cast<unsigned char>(c) < 0x20; }, '_');
    return text;
}

std::string nameForObject(std::string name, const TAdmBlobData& object)
{
    return object.state() == ObjectState::Damaged ? std::move(name) + ".damaged" : std::move(name);
}

bool writeObjectFile(const TAdmBlobData& object, const std::string& path, const std::string& databasePath)
{
    std::error_code error;
    if (std::filesystem::equivalent(path, databasePath, error)) return false;
    OutputFile out;
    if (!out.open(path)) return false;
    out.write({reinterpret_cast<const char*>(object.data().data()), object.data().size()});
    return out.close();
}

} // namespace vellumo
