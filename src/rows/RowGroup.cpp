// SPDX-License-Identifier: MIT
#include "rows/RowGroup.h"

#include "embedded/TAdmBlobData.h"

namespace vellumo {

namespace {

constexpr std::uint32_t rowsPerGroup = 16384;
// Keeps the builder's memory small where texts are long, and a column's bytes far below what 32-bit offsets reach.
constexpr std::size_t bytesPerGroup = 4 << 20;

} // namespace

RowGroupBuilder::RowGroupBuilder(std::vector<CellKind> kinds, std::size_t historyCount)
    : m_kinds(std::move(kinds))
    , m_texts(m_kinds.size())
    , m_blobs(m_kinds.size())
    , m_historyGroups(historyCount)
{
}

void RowGroupBuilder::addText(std::size_t column, std::string_view text)
{
    m_texts[column].append(text);
    m_texts[column].endText();
}

void RowGroupBuilder::addBlob(std::size_t column, std::shared_ptr<TAdmBlobData> blob)
{
    m_blobs[column].push_back(std::move(blob));
}

bool RowGroupBuilder::isFull() const
{
    if (m_rowCount >= rowsPerGroup) return true;
    std::size_t bytes = 0;
    for (const auto& text : m_texts)
        bytes += text.byteCount();
    return bytes >= bytesPerGroup;
}

RowGroup RowGroupBuilder::take()
{
    RowGroup group;
    group.rowCount = m_rowCount;
    group.texts.reserve(m_texts.size());
    for (auto& text : m_texts)
        group.texts.push_back(text.take());
    group.blobs = std::move(m_blobs);
    m_blobs.assign(m_kinds.size(), {});
    group.historyGroups = std::move(m_historyGroups);
    m_historyGroups.assign(group.historyGroups.size(), {});
    m_rowCount = 0;
    return group;
}

} // namespace vellumo
