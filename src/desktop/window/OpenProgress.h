#pragma once

#include <QElapsedTimer>
#include <QString>

#include <cstdint>
#include <memory>

class QDialog;
class QProgressBar;
class QWidget;

namespace vellumo {

// Keeps the window painted while a file is opened on the main thread. After a moment it shows how far it is, with a
// button to stop; from then on nothing but that button takes input.
class OpenProgress {
public:
    static constexpr int delayMs = 400;

    // `window` outlives the object's use.
    explicit OpenProgress(QWidget& window);
    ~OpenProgress();

    void begin(const QString& fileName);
    // Handles events at most every few milliseconds. False when the user wants to stop.
    [[nodiscard]] bool advance(std::uint64_t rowsDone, std::uint64_t rowsExpected);
    void end();
    [[nodiscard]] bool isActive() const { return m_isActive; }

private:
    void showDialog();
    void showProgress(std::uint64_t rowsDone, std::uint64_t rowsExpected);

    QWidget& m_window;
    QString m_fileName;
    bool m_isActive = false;
    bool m_isStopped = false;
    QElapsedTimer m_sinceBegin;
    QElapsedTimer m_sinceEvents;
    std::unique_ptr<QDialog> m_dialog; // null before the delay is over
    QProgressBar* m_bar = nullptr;     // of the dialog
};

} // namespace vellumo
