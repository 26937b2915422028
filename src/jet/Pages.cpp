#include "jet/Pages.h"

namespace vellumo::jet {

ByteSpan Pages::read(std::uint32_t number, PageBuffer& buffer)
{
    if (number == 0 || number >= m_count) return {};
    if (number != buffer.m_number) {
        buffer.m_bytes.resize(m_format.size);
        buffer.m_number = 0;
        if (!readPage(number, buffer.m_bytes.data())) return {};
        buffer.m_number = number;
    }
    return buffer.m_bytes;
}

} // namespace vellumo::jet
