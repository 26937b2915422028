// SPDX-License-Identifier: MIT
#include "desktop/window/OpenMenu.h"

#include "browser/VellumoAppDelegate.h"
#include "desktop/QtText.h"
#include "desktop/window/MainMenus.h"

#include <QActionGroup>
#include <QMenu>

namespace vellumo {

OpenMenu::OpenMenu(MainMenus& menus, QMenu& fileMenu, VellumoAppDelegate& app)
    : QObject(&menus)
    , m_app(app)
    , m_newerFiles(fileMenu.addAction(localizedText("&Always Open Newer Files")))
    , m_encodings(fileMenu.addMenu(localizedText("Text Enco&ding")))
{
    m_newerFiles->setObjectName("opensNewerFiles");
    m_newerFiles->setCheckable(true);
    // Not when the state is only shown.
    connect(m_newerFiles, &QAction::triggered, this, [this](bool isSet) { m_app.SetOpensNewerFiles(isSet); });
    addEncodings(*m_encodings);
    menus.enableWhile(m_encodings, [this] { return m_app.canSetTextEncoding(); });
    // What is checked belongs to the selected file.
    connect(m_encodings, &QMenu::aboutToShow, this, [this] { settingsDidChange(); });
    settingsDidChange();
}

void OpenMenu::addEncodings(QMenu& menu)
{
    auto* group = new QActionGroup(this);
    const auto add = [&](const QString& title, std::optional<int> codePage) {
        auto* action = menu.addAction(title);
        action->setCheckable(true);
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, codePage] { m_app.SetTextEncoding(codePage); });
        return action;
    };
    m_asStated = add(localizedText("As the File States"), std::nullopt);
    menu.addSeparator();
    for (const auto& [codePage, title] : textEncodingItems())
        m_codePages.emplace_back(codePage, add(toQString(title), codePage));
}

void OpenMenu::settingsDidChange()
{
    m_newerFiles->setChecked(m_app.opensNewerFiles());
    const auto chosen = m_app.textEncoding();
    m_asStated->setChecked(!chosen);
    for (const auto& [codePage, action] : m_codePages)
        if (codePage == chosen) action->setChecked(true);
}

} // namespace vellumo
