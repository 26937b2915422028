// SPDX-License-Identifier: MIT
#include "export/biff8/RecordStream.h"

namespace vellumo::biff8 {

namespace {

constexpr std::size_t blockSize = std::size_t{256} << 10;

} // namespace

RecordStream::RecordStream(StreamTarget& target)
    : m_target(target)
{
    m_buffer.reserve(blockSize);
}

void RecordStream::write(std::string_view bytes)
{
    if (m_buffer.size() + bytes.size() > blockSize) flush();
    m_buffer += bytes;
}

void RecordStream::overwrite(std::uint32_t offset, std::string_view bytes)
{
    flush();
    if (!m_failed) m_failed = !m_target.overwrite(offset, bytes);
}

void RecordStream::flush()
{
    if (!m_failed && !m_buffer.empty()) m_failed = !m_target.write(m_buffer);
    m_flushed += static_cast<std::uint32_t>(m_buffer.size());
    m_buffer.clear();
}

} // namespace vellumo::biff8
