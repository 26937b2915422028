// SPDX-License-Identifier: MIT
#include "desktop/grid/ValueText.h"

#include "desktop/QtText.h"

#include <QMimeData>
#include <QTextBlock>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace vellumo {

namespace {

// The state of a block that goes on where the one before was broken.
constexpr int continued = 1;
constexpr int wholeLine = 0;
constexpr qsizetype longestLetter = 32; // with all its marks; what has more of them may be broken

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

// Where a step ends that begins at `start`: between two letters, and not inside of a line end.
std::size_t endOfStep(std::string_view value, std::size_t start)
{
    const auto step = start == 0 ? ValueText::firstBytes : ValueText::stepBytes;
    if (value.size() - start <= step) return value.size();
    auto end = start + step;
    while (end > start + 1 && isContinuation(value[end]))
        --end;
    return value[end - 1] == '\r' && value[end] == '\n' ? end + 1 : end;
}

// The text with "\n" as its only line end, and without what a text document takes for one of its own marks.
QString withPlainLines(std::string_view text)
{
    auto lines = toQString(text);
    lines.replace("\r\n", "\n");
    for (auto& c : lines) {
        if (c == QLatin1Char('\r') || c == QChar::ParagraphSeparator) c = QLatin1Char('\n');
        if (c == QChar(0xFDD0) || c == QChar(0xFDD1)) c = QChar::ReplacementCharacter;
    }
    return lines;
}

// How much of a line that is too long stays together: up to a space near its end, and never half a letter.
qsizetype lengthOfPiece(QStringView line, qsizetype room)
{
    if (line.size() <= room) return line.size();
    const auto space = line.first(room).lastIndexOf(QLatin1Char(' '));
    if (space >= 0 && space > room - ValueText::longestLine / 8) return space + 1;
    auto length = room;
    const auto isInside = [](QChar c) { return c.isLowSurrogate() || c.isMark(); };
    while (length > 1 && room - length < longestLetter && isInside(line[length]))
        --length;
    return length;
}

void startBlock(QTextCursor& cursor, int state)
{
    cursor.insertBlock();
    cursor.block().setUserState(state);
}

} // namespace

ValueText::ValueText(QWidget* parent)
    : QPlainTextEdit(parent)
    , m_growing(new QTimer(this))
{
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setTabChangesFocus(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setFrameShape(QFrame::NoFrame);
    m_growing->setInterval(0);
    connect(m_growing, &QTimer::timeout, this, &ValueText::showMore);
}

void ValueText::setValue(std::string value)
{
    m_growing->stop();
    m_value = std::move(value);
    m_shownBytes = 0;
    clear();
    showMore();
    moveCursor(QTextCursor::Start);
}

void ValueText::showAll() { m_growing->start(); }

void ValueText::showMore()
{
    const auto end = endOfStep(m_value, m_shownBytes);
    append(withPlainLines(std::string_view(m_value).substr(m_shownBytes, end - m_shownBytes)));
    m_shownBytes = end;
    if (!isCut()) m_growing->stop();
    emit valueDidGrow();
}

void ValueText::append(const QString& text)
{
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    cursor.beginEditBlock();
    bool isFirst = true;
    for (auto line : QStringView(text).split(QLatin1Char('\n'))) {
        if (!std::exchange(isFirst, false)) startBlock(cursor, wholeLine);
        while (true) {
            const auto length = lengthOfPiece(line, std::max<qsizetype>(1, longestLine - cursor.positionInBlock()));
            cursor.insertText(line.first(length).toString());
            line = line.sliced(length);
            if (line.isEmpty()) break;
            startBlock(cursor, continued);
        }
    }
    cursor.endEditBlock();
}

QMimeData* ValueText::createMimeDataFromSelection() const
{
    auto* copied = new QMimeData; // the clipboard owns it
    copied->setText(selectedValue());
    return copied;
}

QString ValueText::selectedValue() const
{
    const auto cursor = textCursor();
    const int start = cursor.selectionStart();
    const int end = cursor.selectionEnd();
    if (start == 0 && end == document()->characterCount() - 1) return toQString(m_value);
    QString selected;
    for (auto block = document()->findBlock(start); block.isValid() && block.position() <= end; block = block.next()) {
        if (block.position() > start && block.userState() != continued) selected += QLatin1Char('\n');
        const int from = std::max(start - block.position(), 0);
        selected += block.text().mid(from, std::min(end - block.position(), block.length() - 1) - from);
    }
    return selected;
}

} // namespace vellumo
