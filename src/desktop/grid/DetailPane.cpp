// SPDX-License-Identifier: MIT
#include "desktop/grid/DetailPane.h"

#include "browser/DataView.h"
#include "desktop/QtText.h"
#include "desktop/grid/ObjectActions.h"
#include "desktop/grid/PictureView.h"
#include "desktop/grid/ValueText.h"
#include "desktop/icons/Icons.h"
#include "embedded/TAdmBlobData.h"
#include "text/Format.h"

#include <QBoxLayout>
#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QStackedLayout>

namespace vellumo {

namespace {

ValueText* makeTextView(QWidget* parent)
{
    auto* text = new ValueText(parent);
    text->setAccessibleName(localizedText("Value"));
    return text;
}

} // namespace

DetailPane::DetailPane(QWidget* parent)
    : QWidget(parent)
    , m_pages(new QStackedLayout)
    , m_text(makeTextView(this))
    , m_picture(new PictureView(this))
    , m_cutBar(makeCutBar())
    , m_objectBar(makeObjectBar())
{
    m_pages->addWidget(m_text);
    m_pages->addWidget(m_picture);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(m_pages, 1);
    layout->addWidget(m_cutBar);
    layout->addWidget(m_objectBar);
    connect(m_text, &ValueText::valueDidGrow, this, &DetailPane::showHowMuch);
    connect(m_picture, &PictureView::openRequested, this, [this] { m_dataView->openBlobAsFile(); });
    connect(m_picture, &PictureView::dragStarted, this, [this] {
        if (const auto object = m_dataView->detail().object) dragFile(*this, object->createTempFile(), {});
    });
}

QWidget* DetailPane::makeObjectBar()
{
    auto* bar = new QWidget(this);
    auto* layout = new QHBoxLayout(bar);
    layout->setContentsMargins(6, 4, 6, 4);
    const auto add = [&](const char* key, const char* name) {
        auto* button = new QPushButton(localizedText(key), bar);
        button->setObjectName(name);
        button->setAutoDefault(false);
        layout->addWidget(button);
        return button;
    };
    m_openButton = add(messageKey("O&pen"), "openObject");
    auto* save = add(messageKey("S&ave As…"), "saveObject");
    m_objectNote = new IconLabel(bar);
    m_objectNote->setObjectName("objectNote");
    m_objectNote->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    layout->addWidget(m_objectNote, 1, Qt::AlignVCenter);
    m_fullSizeButton = add(messageKey("F&ull Size"), "fullSize");
    m_fullSizeButton->setCheckable(true);
    connect(m_openButton, &QPushButton::clicked, this, [this] { m_dataView->openObject(); });
    connect(save, &QPushButton::clicked, this, [this] { m_dataView->saveObjectAs(); });
    connect(m_fullSizeButton, &QPushButton::toggled, this, [this](bool isOn) { m_picture->setFullSize(isOn); });
    return bar;
}

QWidget* DetailPane::makeCutBar()
{
    auto* bar = new QWidget(this);
    bar->setObjectName("cutBar");
    m_cutNote = new QLabel(bar);
    auto* showAll = new QPushButton(localizedText("Show A&ll"), bar);
    showAll->setObjectName("showAll");
    showAll->setAutoDefault(false);
    auto* layout = new QHBoxLayout(bar);
    layout->setContentsMargins(6, 4, 6, 4);
    layout->addWidget(m_cutNote, 1);
    layout->addWidget(showAll);
    connect(showAll, &QPushButton::clicked, this, [this] { m_text->showAll(); });
    return bar;
}

void DetailPane::setDataView(DataView& dataView)
{
    m_dataView = &dataView;
    detailDidChange();
}

void DetailPane::detailDidChange()
{
    m_isCurrent = false;
    if (m_dataView != nullptr && isVisible()) showDetail();
}

void DetailPane::showEvent(QShowEvent* event)
{
    if (m_dataView != nullptr && !m_isCurrent) showDetail();
    QWidget::showEvent(event);
}

void DetailPane::showDetail()
{
    m_isCurrent = true;
    const auto& detail = m_dataView->detail();
    m_picture->setPicture(detail.blob ? detail.image : nullptr);
    if (detail.blob) {
        m_text->setValue({});
        m_pages->setCurrentWidget(m_picture);
    } else {
        showText();
    }
    m_objectBar->setVisible(detail.object != nullptr);
    m_objectNote->setContent(detail.objectNote.empty() ? "" : "warning", toQString(detail.objectNote));
    m_openButton->setEnabled(m_dataView->canOpenObject());
    m_fullSizeButton->setVisible(detail.blob != nullptr);
}

void DetailPane::showText()
{
    m_text->setValue(m_dataView->detail().text);
    adjustTextColour();
    m_pages->setCurrentWidget(m_text);
}

void DetailPane::showHowMuch()
{
    m_cutBar->setVisible(m_text->isCut());
    if (m_text->isCut())
        m_cutNote->setText(toQString(localizedFormat("The first %@ of %@ are shown.",
            {formatComputerFileSize(m_text->shownBytes()), formatComputerFileSize(m_text->valueBytes())})));
}

void DetailPane::adjustTextColour()
{
    // From the pane's own palette, which the text's follows but for this colour.
    auto colours = palette();
    if (m_dataView != nullptr && m_dataView->detail().isGrey)
        colours.setColor(QPalette::Active, QPalette::Text, palette().color(QPalette::PlaceholderText));
    colours.setColor(QPalette::Inactive, QPalette::Text, colours.color(QPalette::Active, QPalette::Text));
    m_text->setPalette(colours);
}

void DetailPane::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) adjustTextColour();
}

void DetailPane::contextMenuEvent(QContextMenuEvent* event)
{
    if (m_dataView == nullptr || !m_dataView->detail().object) return;
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    addObjectActions(*menu, *m_dataView);
    menu->popup(event->globalPos());
}

} // namespace vellumo
