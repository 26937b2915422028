// SPDX-License-Identifier: MIT
#include "export/EncodedFile.h"

#include "text/Format.h"
#include "text/UTF8.h"

namespace vellumo {

EncodedFile::EncodedFile(TextEncoder encoder, bool escapes)
    : m_encoder(std::move(encoder))
    , m_escapes(escapes)
    , m_isUTF8(m_encoder.keeps("\xC3\xA4"))
{
}

void EncodedFile::reset()
{
    m_text.clear();
    m_isRepresentable = true;
}

void EncodedFile::passOn()
{
    if (!m_isUTF8) m_isRepresentable = convert() && m_isRepresentable;
    m_file.write(m_isUTF8 ? m_text.view() : std::string_view(m_bytes));
    m_text.clear();
    m_bytes.clear();
}

bool EncodedFile::convert()
{
    if (m_encoder.append(m_text.view(), m_bytes)) return true;
    if (!m_escapes) return false;
    for (std::string_view rest = m_text.view(); !rest.empty();) {
        const auto character = firstCharacter(rest);
        rest.remove_prefix(character.size());
        if (m_encoder.append(character, m_bytes)) continue;
        if (!m_encoder.append(format("&#%ld;", {firstCodePoint(character)}), m_bytes)) return false;
    }
    return true;
}

} // namespace vellumo
