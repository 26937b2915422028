#include "desktop/window/OpenProgress.h"

#include "desktop/QtText.h"
#include "text/Format.h"

#include <QApplication>
#include <QBoxLayout>
#include <QDialog>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <algorithm>

namespace vellumo {

namespace {

constexpr int eventIntervalMs = 40;
constexpr int barSteps = 1000;

} // namespace

OpenProgress::OpenProgress(QWidget& window)
    : m_window(window)
{
}

OpenProgress::~OpenProgress() = default;

void OpenProgress::begin(const QString& fileName)
{
    m_fileName = fileName;
    m_isActive = true;
    m_isStopped = false;
    m_sinceBegin.start();
    m_sinceEvents.start();
    QApplication::setOverrideCursor(Qt::WaitCursor);
}

bool OpenProgress::advance(std::uint64_t rowsDone, std::uint64_t rowsExpected)
{
    if (m_isStopped) return false;
    if (m_sinceEvents.elapsed() < eventIntervalMs) return true;
    m_sinceEvents.restart();
    if (!m_dialog && m_sinceBegin.elapsed() >= delayMs) showDialog();
    if (m_dialog) showProgress(rowsDone, rowsExpected);
    // Input waits until the dialog is there, which then keeps it from all other windows.
    QApplication::processEvents(m_dialog ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
    return !m_isStopped;
}

void OpenProgress::end()
{
    QApplication::restoreOverrideCursor();
    m_dialog.reset();
    m_bar = nullptr;
    m_isActive = false;
}

void OpenProgress::showDialog()
{
    // The sheet itself shows that the program is at work; over its button the usual pointer says more.
    QApplication::changeOverrideCursor(Qt::ArrowCursor);
    m_dialog = std::make_unique<QDialog>(&m_window, Qt::Sheet);
    m_dialog->setObjectName("openProgress");
    m_dialog->setWindowModality(Qt::ApplicationModal);
    m_dialog->setWindowTitle(localizedText("Open"));
    auto* label = new QLabel(toQString(localizedFormat("Opening %@…", {fromQString(m_fileName)})), m_dialog.get());
    label->setTextFormat(Qt::PlainText);
    m_bar = new QProgressBar(m_dialog.get());
    m_bar->setMinimumWidth(320);
    m_bar->setAccessibleName(label->text());
    auto* stop = new QPushButton(localizedText("Stop"), m_dialog.get());
    stop->setDefault(true);
    auto* layout = new QVBoxLayout(m_dialog.get());
    layout->addWidget(label);
    layout->addWidget(m_bar);
    layout->addWidget(stop, 0, Qt::AlignRight);
    QObject::connect(stop, &QPushButton::clicked, m_dialog.get(), &QDialog::reject);
    QObject::connect(m_dialog.get(), &QDialog::rejected, m_dialog.get(), [this] { m_isStopped = true; });
    m_dialog->show();
}

void OpenProgress::showProgress(std::uint64_t rowsDone, std::uint64_t rowsExpected)
{
    if (rowsExpected == 0) {
        m_bar->setRange(0, 0); // busy, nobody knows for how long
        return;
    }
    m_bar->setRange(0, barSteps);
    m_bar->setValue(static_cast<int>(std::min(rowsDone, rowsExpected) * barSteps / rowsExpected));
}

} // namespace vellumo
