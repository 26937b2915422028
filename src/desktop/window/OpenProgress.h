// SPDX-License-Identifier: MIT
#pragma once

#include <QTimer>
#include <QWidget>

#include <cstdint>
#include <functional>

class QLabel;
class QProgressBar;
class QPushButton;

namespace vellumo {

// Tells how far something is that takes its time, such as a file that is being opened, with a button to stop. Hidden
// while nothing is, and at first: a file that opens at once is never announced.
class OpenProgress : public QWidget {
public:
    static constexpr int delayMs = 400;

    // `stop` gives it up.
    OpenProgress(std::function<void()> stop, QWidget* parent);

    void begin(const QString& text);
    // `rowsExpected` 0: nobody knows how many.
    void advance(std::uint64_t rowsDone, std::uint64_t rowsExpected);
    void end();

private:
    QLabel* m_text;
    QProgressBar* m_bar;
    QPushButton* m_stop;
    QTimer m_showLater;
};

} // namespace vellumo
