// SPDX-License-Identifier: MIT
#pragma once

#include <QPlainTextEdit>

#include <string>

class QTimer;

namespace vellumo {

// A value as a text to read, select and copy, however long it is: what is seen is laid out, in steps that keep the
// window alive. Of a long value the beginning is shown until showAll(). A line that would take long to lay out is
// broken into several; what is copied has no such breaks.
class ValueText : public QPlainTextEdit {
    Q_OBJECT

public:
    // Bytes of a value that are shown at first, and that are added in one step later: so few that the window answers
    // in between, whatever lines they make.
    static constexpr std::size_t firstBytes = 64 * 1024;
    static constexpr std::size_t stepBytes = 16 * 1024;
    // Characters of a line that is broken.
    static constexpr qsizetype longestLine = 2000;

    explicit ValueText(QWidget* parent = nullptr);

    // UTF-8.
    void setValue(std::string value);
    [[nodiscard]] bool isCut() const { return m_shownBytes < m_value.size(); }
    [[nodiscard]] std::size_t shownBytes() const { return m_shownBytes; }
    [[nodiscard]] std::size_t valueBytes() const { return m_value.size(); }
    // Adds the rest step by step. valueDidGrow tells of each.
    void showAll();

signals:
    void valueDidGrow();

protected:
    // All of the text stands for all of the value, cut or not.
    QMimeData* createMimeDataFromSelection() const override;

private:
    void showMore();
    void append(const QString& text);
    [[nodiscard]] QString selectedValue() const;

    std::string m_value;
    std::size_t m_shownBytes = 0;
    QTimer* m_growing;
};

} // namespace vellumo
