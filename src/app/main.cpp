// SPDX-License-Identifier: MIT
// vellumo: the desktop program.

#include "NoDisplayNotice.h"
#include "TerminationSignals.h"
#include "adapters/IniDefaults.h"
#include "adapters/XbelRecentDocuments.h"
#include "desktop/QtText.h"
#include "desktop/appearance/Appearance.h"
#include "desktop/instance/RunningInstance.h"
#include "desktop/ports/QtAlerts.h"
#include "desktop/ports/QtFilePanels.h"
#include "desktop/ports/QtImageDecoder.h"
#include "desktop/ports/QtLoadErrorWindow.h"
#include "desktop/ports/QtMainThread.h"
#include "desktop/ports/QtSystemLog.h"
#include "desktop/ports/QtWorkspace.h"
#include "desktop/window/MainWindow.h"
#include "platform/DatabasePath.h"
#include "platform/DesktopId.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QLibraryInfo>
#include <QTranslator>
#include <QUrl>

#include <algorithm>
#include <cstring>

namespace {

using namespace vellumo;

// The translations lie beside the program's folder: in a build tree, or where it is installed.
std::string localeFolder()
{
    const auto prefix = QFileInfo(QFileInfo("/proc/self/exe").symLinkTarget()).dir().absolutePath() + "/..";
    const QString built = prefix + "/locale";
    return fromQString(QDir(built).exists() ? built : prefix + "/share/locale");
}

// File manager and terminal give paths and "file:" addresses.
std::vector<std::string> absolutePaths(const QStringList& arguments)
{
    std::vector<std::string> paths;
    for (const auto& argument : arguments) {
        const auto path = argument.startsWith("file:") ? QUrl(argument).toLocalFile() : argument;
        paths.push_back(completedDatabasePath(fromQString(QDir::cleanPath(QFileInfo(path).absoluteFilePath()))));
    }
    return paths;
}

void nameProgram()
{
    QCoreApplication::setApplicationName("vellumo");
    QCoreApplication::setApplicationVersion(VELLUMO_VERSION);
}

// Answers --help and --version and ends the program.
std::vector<std::string> filesOfCommandLine()
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        localizedText("Opens Microsoft Access databases, shows what is in them and exports it."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument("files", localizedText("Databases to open."), "[files...]");
    parser.process(*qApp);
    return absolutePaths(parser.positionalArguments());
}

bool asksForNoWindow(const char* argument)
{
    const auto options = {"-h", "--help", "--help-all", "-v", "--version"};
    return std::any_of(
        options.begin(), options.end(), [&](const char* name) { return std::strcmp(argument, name) == 0; });
}

// Help and version need no display, which a QApplication would ask for. Returns when there is more to do.
void answerWithoutWindow(int argc, char** argv)
{
    if (std::none_of(argv + 1, argv + argc, asksForNoWindow)) return;
    QCoreApplication application(argc, argv);
    nameProgram();
    filesOfCommandLine();
}

// Qt has texts of its own, on the buttons of dialogs and in the menus of text fields. Where their translations are not
// installed they stay English.
void translateQtTexts()
{
    auto* translator = new QTranslator(qApp);
    const auto language = messagesLanguage();
    if (!language.empty()
        && translator->load("qtbase_" + toQString(language), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(translator);
}

// The Qt side of all that the browser needs of the desktop.
struct Desktop {
    IniDefaults defaults{userSettingsPath()};
    XbelRecentDocuments recentDocuments{userXbelSettings()};
    QtAlerts alerts;
    QtFilePanels filePanels;
    QtImageDecoder imageDecoder;
    QtMainThread mainThread;
    QtLoadErrorWindow loadErrorWindow{mainThread};
    QtPasteboard pasteboard;
    QtSystemLog systemLog;
    QtWorkspace workspace;

    DesktopPorts ports()
    {
        // Never destroyed: a thread may wait for its answer to the end of the program.
        static auto* const fileFacts = new SystemFileFacts;
        return {alerts, defaults, *fileFacts, filePanels, imageDecoder, mainThread, pasteboard, recentDocuments,
            systemLog, workspace, fromQString(QDir::homePath()), &loadErrorWindow};
    }
};

// Whether a program that runs already has taken the files. Otherwise this is the one that others find.
bool anotherTakes(RunningInstance& instance, const std::vector<std::string>& files)
{
    if (instance.handOver(files)) return true;
    // Of two that start at once, the second finds the first here.
    return instance.listen() == RunningInstance::Listening::AnotherRuns && instance.handOver(files);
}

int run(const std::vector<std::string>& files)
{
    // Before the window is built, which takes a while: who starts meanwhile waits for an answer.
    RunningInstance instance(userSocketPath());
    if (anotherTakes(instance, files)) return 0;
    Desktop desktop;
    Appearance appearance(desktop.defaults);
    MainWindow window(desktop.ports());
    window.addAppearanceMenu(appearance);
    desktop.alerts.setMainWindow(&window);
    desktop.filePanels.setMainWindow(&window);
    desktop.loadErrorWindow.setMainWindow(&window);
    TerminationSignals termination([&window] { window.terminate(); });
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, &window, [&window] { window.shutDown(); });
    window.start();
    instance.receive([&window](const std::vector<std::string>& received) { window.openFiles(received); });
    if (!files.empty())
        QMetaObject::invokeMethod(
            &window, [&] { window.openFiles(files); }, Qt::QueuedConnection);
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    initMessages(localeFolder().c_str());
    answerWithoutWindow(argc, argv);
    NoDisplayNotice notice;
    QApplication application(argc, argv);
    notice.end();
    translateQtTexts();
    nameProgram();
    QGuiApplication::setDesktopFileName(desktopId);
    return run(filesOfCommandLine());
}
