// SPDX-License-Identifier: MIT
#pragma once

#include "export/files/OutputFile.h"
#include "text/TextBuffer.h"
#include "text/TextEncoding.h"

namespace vellumo {

// A text file in one encoding, written record by record. Errors of the disk stick, as in OutputFile.
class EncodedFile {
public:
    // `escapes`: a character that the encoding does not have is written as a reference of XML.
    EncodedFile(TextEncoder encoder, bool escapes);

    [[nodiscard]] OutputFile& file() { return m_file; }
    [[nodiscard]] TextEncoder& encoder() { return m_encoder; }
    // For the next file: nothing is left of what was to be written to the one before.
    void reset();

    // UTF-8, to be appended to.
    [[nodiscard]] TextBuffer& text() { return m_text; }
    // The text so far ends with a whole record. False when the encoding does not have all characters of this one or of
    // one before.
    [[nodiscard]] bool endRecord()
    {
        if (!m_isUTF8 || m_text.size() >= enough) passOn();
        return m_isRepresentable;
    }
    // Hands the text over; inside a record that grows large, too.
    void passOn();

private:
    // Not less than what the file takes without a copy.
    static constexpr std::size_t enough = std::size_t{256} << 10;

    [[nodiscard]] bool convert();

    OutputFile m_file;
    TextEncoder m_encoder;
    bool m_escapes;
    bool m_isUTF8;
    bool m_isRepresentable = true;
    TextBuffer m_text;
    std::string m_bytes;
};

} // namespace vellumo
