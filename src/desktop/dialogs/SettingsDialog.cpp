// SPDX-License-Identifier: MIT
#include "desktop/dialogs/SettingsDialog.h"

#include "browser/VellumoAppDelegate.h"
#include "desktop/QtText.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>
#include <functional>

namespace vellumo {

SettingsDialog::SettingsDialog(VellumoAppDelegate& app, QWidget* window)
    : QDialog(window)
{
    setObjectName("settingsDialog");
    setWindowTitle(localizedText("Settings"));
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);
    auto* layout = new QVBoxLayout(this);
    const auto add = [&](const char* name, const char* key, bool isSet, std::function<void()> change) {
        auto* box = new QCheckBox(localizedText(key), this);
        box->setObjectName(name);
        box->setChecked(isSet);
        connect(box, &QCheckBox::toggled, this, std::move(change));
        layout->addWidget(box);
    };
    add("opensNewerFiles", messageKey("&Always open files of Access 2007 to 2019"), app.opensNewerFiles(),
        [&app] { app.SetOpensNewerFiles(!app.opensNewerFiles()); });
    add("showsLookupTexts", messageKey("Show &lookup texts in place of stored values"),
        app.toggles().isShown(ViewToggle::LookupTexts), [&app] { app.ToggleLookupTexts(); });
    add("showsCaptions", messageKey("Show &captions in place of column names"),
        app.toggles().isShown(ViewToggle::Captions), [&app] { app.ToggleCaptions(); });
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
}

} // namespace vellumo
