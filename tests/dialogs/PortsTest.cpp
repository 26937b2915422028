// SPDX-License-Identifier: MIT
#include "desktop/ports/QtAlerts.h"
#include "desktop/ports/QtFilePanels.h"
#include "desktop/ports/QtImageDecoder.h"
#include "desktop/ports/QtLoadErrorWindow.h"
#include "desktop/ports/QtMainThread.h"
#include "desktop/ports/QtSystemLog.h"
#include "desktop/ports/QtWorkspace.h"
#include "support/QtApplication.h"

#include <QBuffer>
#include <QClipboard>
#include <QImage>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

namespace vellumo {
namespace {

using namespace test;
using namespace std::string_view_literals;

std::span<const std::byte> bytesOf(std::string_view text)
{
    return {reinterpret_cast<const std::byte*>(text.data()), text.size()};
}

// 3 x 2: red, green, blue; white, black, grey.
QImage picture()
{
    QImage image(3, 2, QImage::Format_RGB32);
    const QRgb pixels[] = {0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFFFFFFFF, 0xFF000000, 0xFF808080};
    for (int i = 0; i < 6; ++i)
        image.setPixel(i % 3, i / 3, pixels[i]);
    return image;
}

std::string encoded(const char* format)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(picture().save(&buffer, format)) << format;
    return buffer.data().toStdString();
}

TEST(QtImageDecoder, ReadsEachFormatByItsBytes)
{
    QtImageDecoder decoder;
    for (const auto* format : {"png", "bmp", "tiff", "ico", "jpg"}) {
        const auto image = decoder.decode(bytesOf(encoded(format)));
        ASSERT_NE(image, nullptr) << format;
        ASSERT_EQ(std::pair(image->width, image->height), std::pair(3, 2)) << format;
        ASSERT_EQ(image->rgba.size(), 24U) << format;
        if (format == "jpg"sv) continue; // loses colours
        EXPECT_EQ(std::vector(image->rgba.begin(), image->rgba.begin() + 8),
            (std::vector<std::uint8_t>{255, 0, 0, 255, 0, 255, 0, 255}))
            << format;
    }
    // 1 x 1, a palette of two colours, one pixel.
    const auto gif = "GIF89a\1\0\1\0\x80\0\0\xFF\0\0\0\0\0,\0\0\0\0\1\0\1\0\0\2\2D\1\0;"sv;
    EXPECT_NE(decoder.decode(bytesOf(gif)), nullptr);
}

TEST(QtImageDecoder, TakesNothingElseForAPicture)
{
    const auto png = encoded("png");
    auto hugePng = png;
    hugePng.replace(16, 8, "\0\1\0\0\0\1\0\0"sv); // 65536 x 65536; the checksum does not matter to the size
    const struct {
        const char* name;
        std::string bytes;
    } cases[] = {
        {"nothing", ""},
        {"zeros", std::string(64, '\0')}, // a wireless bitmap to a decoder that is merely tried
        {"text that starts like a bitmap", "BM and more text that goes on for a while, with no header"},
        {"a drawing", "<svg xmlns='http://www.w3.org/2000/svg' width='3' height='2'/>"},
        {"a format that few programs write", encoded("xpm")},
        {"a format without a signature", encoded("xbm")},
        {"a cut picture", png.substr(0, 20)},
        {"the signature alone", png.substr(0, 8)},
        {"a giant", hugePng},
    };
    QtImageDecoder decoder;
    for (const auto& c : cases)
        EXPECT_EQ(decoder.decode(bytesOf(c.bytes)), nullptr) << c.name;
}

TEST(QtMainThread, RunsTheWorkOnTheMainThreadAndWaits)
{
    QtMainThread mainThread;
    const auto mainId = std::this_thread::get_id();
    std::thread::id ranOn;
    mainThread.performAndWait([&] { ranOn = std::this_thread::get_id(); });
    EXPECT_EQ(ranOn, mainId); // from the main thread: at once

    bool isDone = false;
    std::thread worker([&] {
        std::string log;
        mainThread.performAndWait([&] {
            ranOn = std::this_thread::get_id();
            log = "work";
        });
        log += " and on";
        mainThread.performAndWait([&] { isDone = log == "work and on"; });
    });
    ranOn = {};
    EXPECT_TRUE(eventually([&] { return isDone; }));
    worker.join();
    EXPECT_EQ(ranOn, mainId);
}

TEST(QtAlerts, ASheetDoesNotWaitAndAModalBoxDoes)
{
    QtAlerts alerts;
    QWidget window;
    window.show();
    alerts.setMainWindow(&window);
    alerts.show({"Export finished.", "<b>Orders</b> Failed", Alert::Style::Sheet});
    auto* sheet = window.findChild<QMessageBox*>();
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->windowModality(), Qt::WindowModal);
    EXPECT_EQ(sheet->informativeText(), "<b>Orders</b> Failed");
    for (const auto* label : sheet->findChildren<QLabel*>())
        EXPECT_TRUE(label->textFormat() == Qt::PlainText || !label->pixmap(Qt::ReturnByValue).isNull());
    sheet->button(QMessageBox::Ok)->click();

    bool wasModal = false;
    QTimer::singleShot(0, [&] {
        auto* box = QApplication::activeModalWidget();
        wasModal = box != nullptr && box->windowModality() == Qt::ApplicationModal;
        if (box != nullptr) box->close();
    });
    alerts.show({"Error", "File (x.mdb) cannot be opened", Alert::Style::Modal});
    EXPECT_TRUE(wasModal);
}

TEST(QtAlerts, TellsWhatWasChosenOnceTheMessageHasGone)
{
    QtAlerts alerts;
    QWidget window;
    window.show();
    alerts.setMainWindow(&window);
    std::vector<std::size_t> answers;
    const auto chosen = [&](std::size_t choice) { answers.push_back(choice); };
    const auto click = [](QMessageBox& box, const char* title) {
        for (auto* button : box.buttons())
            if (button->text().remove('&') == title) return button->click();
        ADD_FAILURE() << "there is no " << title;
    };
    for (const auto* title : {"Second", "OK"}) {
        alerts.ask({"Error", "File", Alert::Style::Sheet}, {"First", "Second"}, chosen);
        auto* sheet = window.findChild<QMessageBox*>();
        ASSERT_NE(sheet, nullptr);
        QPointer<QMessageBox> gone = sheet;
        click(*sheet, title);
        EXPECT_TRUE(QTest::qWaitFor([&] { return gone == nullptr; }));
    }
    EXPECT_EQ(answers, std::vector<std::size_t>{1});
    QTimer::singleShot(0, [&] { click(*window.findChild<QMessageBox*>(), "First"); });
    alerts.ask({"Error", "File", Alert::Style::Modal}, {"First", "Second"}, chosen);
    EXPECT_EQ(answers, (std::vector<std::size_t>{1, 0}));
    QTimer::singleShot(0, [&] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
    alerts.ask({"Error", "File", Alert::Style::Modal}, {"First", "Second"}, chosen);
    EXPECT_EQ(answers.size(), 2U);
}

TEST(QtAlerts, ALongReportIsScrolled)
{
    QtAlerts alerts;
    QWidget window;
    window.show();
    alerts.setMainWindow(&window);
    std::string body;
    for (int line = 0; line < 400; ++line)
        body += "<b>Orders</b>: a row cannot be read.\n";
    alerts.show({"Export finished.", body, Alert::Style::Sheet, "And so on."});
    auto& sheet = *window.findChild<QMessageBox*>();
    EXPECT_LT(sheet.height(), 500);
    auto* text = sheet.findChild<QPlainTextEdit*>("alertBody");
    ASSERT_NE(text, nullptr);
    EXPECT_TRUE(text->isVisible());
    EXPECT_EQ(text->toPlainText().toStdString(), body + "\n\nAnd so on.");
    sheet.button(QMessageBox::Ok)->click();
}

TEST(Dialogs, GoWithTheirWindowAsIfCancelled)
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QtMainThread mainThread;
    QtAlerts alerts;
    QtFilePanels panels;
    QtLoadErrorWindow errorWindow(mainThread);
    const struct {
        const char* name;
        std::function<bool()> show; // true when it was answered
    } cases[] = {
        {"open", [&] { return panels.openFiles({"mdb"}, "").has_value(); }},
        {"folder", [&] { return panels.chooseFolder("").has_value(); }},
        {"save", [&] { return panels.saveFile("xls", "Shop").has_value(); }},
        {"alert",
            [&] {
                return alerts.show({"Error", "File", Alert::Style::Modal}), false;
            }},
        {"load error",
            [&] {
                return errorWindow.show({"Load Library Error", "x", "y"}), false;
            }},
    };
    for (const auto& [name, show] : cases) {
        auto window = std::make_unique<QWidget>();
        window->show();
        alerts.setMainWindow(window.get());
        panels.setMainWindow(window.get());
        errorWindow.setMainWindow(window.get());
        QPointer<QWidget> dialog;
        QTimer::singleShot(0, [&, name = name] {
            dialog = QApplication::activeModalWidget();
            ASSERT_NE(dialog, nullptr) << name;
            EXPECT_EQ(dialog->windowModality(), Qt::ApplicationModal) << name;
            EXPECT_EQ(dialog->parentWidget(), window.get()) << name;
            window.reset();
        });
        EXPECT_FALSE(show()) << name;
        EXPECT_EQ(dialog, nullptr) << name;
    }
}

TEST(QtLoadErrorWindow, TellsAWorkerOnTheMainThreadAndWaits)
{
    QtMainThread mainThread;
    QtLoadErrorWindow errorWindow(mainThread);
    bool isBack = false;
    std::thread worker([&] {
        errorWindow.show({"Load Library Error", "not <b>found</b>: '/lib/x.so'", "missing: a\nmissing: b"});
        mainThread.performAndWait([&] { isBack = true; });
    });
    bool wasShown = false;
    QTimer person;
    QObject::connect(&person, &QTimer::timeout, [&] {
        auto* window = QApplication::activeModalWidget();
        if (window == nullptr) return;
        wasShown = true;
        EXPECT_FALSE(isBack);
        EXPECT_EQ(window->windowTitle(), "Load Library Error");
        const auto& label = *window->findChild<QLabel*>();
        EXPECT_EQ(label.text(), "not <b>found</b>: '/lib/x.so'");
        EXPECT_EQ(label.textFormat(), Qt::PlainText);
        const auto& list = *window->findChild<QPlainTextEdit*>();
        EXPECT_EQ(list.toPlainText(), "missing: a\nmissing: b");
        EXPECT_TRUE(list.isReadOnly());
        window->findChild<QPushButton*>()->click();
    });
    person.start(0);
    EXPECT_TRUE(eventually([&] { return isBack; }));
    EXPECT_TRUE(wasShown);
    worker.join();
}

TEST(QtPasteboard, KeepsEveryCharacter)
{
    QtPasteboard().setText("1\tGrün 漢字 😀\n");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "1\tGrün 漢字 😀\n");
}

TEST(QtWorkspace, EveryFileTypeHasASmallIcon)
{
    for (const auto* extension : {"png", "doc", "", "no-such-type"}) {
        const auto image = QtWorkspace().fileTypeIcon(extension);
        ASSERT_NE(image, nullptr) << extension;
        EXPECT_EQ(std::pair(image->width, image->height), std::pair(16, 16)) << extension;
    }
}

TEST(QtSystemLog, WritesAnEntryThatTheJournalUnderstands)
{
    const TempFolder folder;
    const auto path = folder.path("journal");
    const int server = ::socket(AF_UNIX, SOCK_DGRAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(::bind(server, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    QtSystemLog(path).log("two\nlines");
    char entry[200];
    const auto size = ::recv(server, entry, sizeof entry, MSG_DONTWAIT);
    ::close(server);
    ASSERT_GT(size, 0);
    EXPECT_EQ(std::string_view(entry, static_cast<std::size_t>(size)),
        "PRIORITY=5\nSYSLOG_IDENTIFIER=vellumo\nMESSAGE\n\x09\0\0\0\0\0\0\0two\nlines\n"sv);
}

} // namespace
} // namespace vellumo
