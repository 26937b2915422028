// SPDX-License-Identifier: MIT
#include "desktop/window/OpenProgress.h"

#include "desktop/QtText.h"

#include <QBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <algorithm>

namespace vellumo {

namespace {

constexpr int barSteps = 1000;
constexpr int barWidth = 160;

} // namespace

OpenProgress::OpenProgress(std::function<void()> stop, QWidget* parent)
    : QWidget(parent)
    , m_text(new QLabel(this))
    , m_bar(new QProgressBar(this))
    , m_stop(new QPushButton(localizedText("Stop"), this))
{
    setObjectName("openProgress");
    m_text->setTextFormat(Qt::PlainText);
    m_bar->setFixedWidth(barWidth);
    m_stop->setAutoDefault(false);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 6, 0);
    layout->addWidget(m_text);
    layout->addWidget(m_bar);
    layout->addWidget(m_stop);
    connect(m_stop, &QPushButton::clicked, this, [this, stop = std::move(stop)] {
        m_stop->setEnabled(false);
        stop();
    });
    m_showLater.setSingleShot(true);
    m_showLater.setInterval(delayMs);
    m_showLater.callOnTimeout(this, [this] { show(); });
    hide();
}

void OpenProgress::begin(const QString& text)
{
    // A long name must not make the window wide.
    const auto room = fontMetrics().averageCharWidth() * 40;
    m_text->setText(fontMetrics().elidedText(text, Qt::ElideMiddle, room));
    m_bar->setAccessibleName(text);
    m_bar->setRange(0, 0);
    m_stop->setEnabled(true);
    m_showLater.start();
}

void OpenProgress::advance(std::uint64_t rowsDone, std::uint64_t rowsExpected)
{
    if (rowsExpected == 0) return m_bar->setRange(0, 0); // busy
    m_bar->setRange(0, barSteps);
    m_bar->setValue(static_cast<int>(std::min(rowsDone, rowsExpected) * barSteps / rowsExpected));
}

void OpenProgress::end()
{
    m_showLater.stop();
    hide();
}

} // namespace vellumo
