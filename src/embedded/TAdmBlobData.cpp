#include "embedded/TAdmBlobData.h"

#include "platform/ImageDecoder.h"

namespace vellumo {

TAdmBlobData::TAdmBlobData(std::vector<std::byte> data, std::string fileExtension)
    : m_data(std::move(data))
    , m_fileExtension(std::move(fileExtension))
{
}

TAdmBlobData::~TAdmBlobData() = default;

} // namespace vellumo
