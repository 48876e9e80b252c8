// SPDX-License-Identifier: MIT
#include "browser/userinfomanager.h"
#include "controls/filechooser.h"
#include "MediaKits/MainWindow/aboutmedialog.h"
#include "MediaKits/MainWindow/appmenu.h"
#include "MediaKits/MainWindow/customerservice.h"
#include "MediaKits/MainWindow/exittipsdialog.h"
#include "MediaKits/MainWindow/feedbackdialog.h"
#include "MediaKits/MainWindow/mainwindow.h"
#include "resources/look.h"
#include "support/casename.h"
#include "support/desktop.h"
#include "support/guisupport.h"

#include <QDesktopServices>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QSystemTrayIcon>
#include <QtTest>

class TestMenus : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void menuRows();
    void trayOpensOneDialog();
    void rowsOpenDialogs();
    void feedbackLimit();
    void feedbackSubmit();
    void feedbackImage();
    void feedbackOffersImages();
    void links();
    void openUrl(const QUrl &url) { m_opened = url; }

private:
    QUrl m_opened;
};

void TestMenus::initTestCase()
{
    QApplication::setQuitOnLastWindowClosed(false);
    QVERIFY(Look::apply());
}

void TestMenus::menuRows()
{
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const auto rowsOfNewMenu = [&window](int *height) {
        press(window, "btnMore");
        QPointer<AppMenu> menu = window.findChild<AppMenu *>();
        *height = menu->height();
        QStringList rows;
        for (const QPushButton *row : menu->findChildren<QPushButton *>()) {
            if (row->isVisible())
                rows += row->text();
        }
        QTest::keyClick(menu, Qt::Key_Escape);
        return QTest::qWaitFor([&menu] { return menu.isNull(); }) ? rows : QStringList();
    };
    QStringList rows = {"注册/登录"_s, "关于我们"_s, "检查更新"_s, "投诉反馈"_s};
    int full = 0;
    QCOMPARE(rowsOfNewMenu(&full), rows);

    UserInfoManager &user = UserInfoManager::instance();
    user.setUserInfoJson(R"({"name":"墨客"})"_s);
    user.markLoggedIn();
    QVERIFY(!child(window, "btnLogin")->isVisible());
    QCOMPARE(child<QLabel>(window, "lblUser")->text(), "墨客"_s);
    rows.removeFirst();
    int shorter = 0;
    QCOMPARE(rowsOfNewMenu(&shorter), rows);
    QCOMPARE(full - shorter, 34);
    user.logout();
    QVERIFY(child(window, "btnLogin")->isVisible());
    for (const bool isReached : {false, true}) {
        ProductContact contact;
        contact.phone = isReached ? "12345"_s : QString();
        const AppMenu menu(&window, contact);
        QCOMPARE(child(menu, "btnToCService")->isHidden(), !isReached);
    }
}

// The tray can be reached while a dialog is up.
void TestMenus::trayOpensOneDialog()
{
    const SystemTray tray;
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const QList<QAction *> entries =
        window.findChild<QSystemTrayIcon *>()->contextMenu()->actions();
    int most = 0;
    QTimer closes;
    connect(&closes, &QTimer::timeout, &window, [&most] {
        const QWidgetList tops = QApplication::topLevelWidgets();
        most = qMax(most, int(std::count_if(tops.begin(), tops.end(), [](const QWidget *top) {
                        return top->isVisible() && top->isModal();
                    })));
        QApplication::activeModalWidget()->close();
    });
    whenModal("AboutMeDialog", [&](QWidget &) {
        closes.start();
        entries[0]->trigger();
        entries[1]->trigger();
    });
    entries[1]->trigger();
    closes.stop();
    QCOMPARE(most, 1);
    QTRY_VERIFY(window.isActiveWindow());
}

// What a row opens closes by Escape, and neither it nor the menu stays.
void TestMenus::rowsOpenDialogs()
{
    const auto check = [&](const char *caseName, const QByteArray &row, const QByteArray &opened) {
        const CaseName inCase(caseName);
        const SystemTray tray;
        MainWindow window;
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QByteArray seen;
        QTimer looks;
        connect(&looks, &QTimer::timeout, this, [&] {
            QWidget *top = QApplication::activeModalWidget();
            if (top == nullptr)
                top = QApplication::activePopupWidget();
            if (top == nullptr)
                return;
            looks.stop();
            QVERIFY(QTest::qWaitForWindowExposed(top));
            seen = top->metaObject()->className();
            QTest::keyClick(top, Qt::Key_Escape);
            QTRY_VERIFY(QApplication::activeModalWidget() != top);
        });
        looks.start();
        if (row == "btnClose") {
            press(window, "btnClose");
        } else {
            press(window, "btnMore");
            press(*window.findChild<AppMenu *>(), row.constData());
        }
        QTRY_COMPARE(seen, opened);
        QTRY_COMPARE(QApplication::activePopupWidget(), nullptr);
        QTRY_COMPARE(window.findChild<AppMenu *>(), nullptr);
        QTRY_COMPARE(window.findChild<CustomerService *>(), nullptr);
    };
    check("login", QByteArray("btnRegister"), QByteArray("LoginNotice"));
    check("about", QByteArray("btnAboutMe"), QByteArray("AboutMeDialog"));
    check("update", QByteArray("btnUpdate"), QByteArray("MediaMessageBox"));
    check("feedback", QByteArray("btnFeedback"), QByteArray("FeedbackDialog"));
    check("service", QByteArray("btnToCService"), QByteArray("CustomerService"));
    check("exit", QByteArray("btnClose"), QByteArray("ExitTipsDialog"));
}

void TestMenus::feedbackLimit()
{
    const auto check = [&](const char *caseName, const QString &start, int cursor,
                           const QString &typed, const QString &result, int cursorAfter) {
        const CaseName inCase(caseName);
        FeedbackDialog dialog;
        auto *edit = child<QPlainTextEdit>(dialog, "plainTextEdit");
        edit->setPlainText(start);
        QTextCursor place = edit->textCursor();
        place.setPosition(cursor);
        edit->setTextCursor(place);
        edit->insertPlainText(typed);
        QCOMPARE(edit->toPlainText(), result);
        QCOMPARE(edit->textCursor().position(), cursorAfter);
        QCOMPARE(child<QLabel>(dialog, "lblCharCount")->text(),
                 "%1/200"_s.arg(edit->toPlainText().size()));
    };
    const QString a200(200, u'a');
    const QString a199(199, u'a');
    const QString emoji = QString::fromUtf8("\xf0\x9f\x98\x80");
    check("fits", a199, 0, "b"_s, u'b' + a199, 1);
    check("in front", a200, 0, "bb"_s, a200, 0);
    check("inside, partly", a199, 100, "bcd"_s, QString(100, u'a') + u'b' + QString(99, u'a'), 101);
    check("half a character", a199, 199, emoji, a199, 199);
}

void TestMenus::feedbackSubmit()
{
    FeedbackDialog dialog;
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    auto *edit = child<QPlainTextEdit>(dialog, "plainTextEdit");
    auto *contact = child<QLineEdit>(dialog, "lineEdit");

    press(dialog, "btnSubmit");
    QTRY_COMPARE(toastText(), "请输入建议反馈"_s);
    QCOMPARE(dialog.focusWidget(), edit);
    QTRY_COMPARE(toastText(), QString());
    edit->setPlainText("很好"_s);
    press(dialog, "btnSubmit");
    QTRY_COMPARE(toastText(), "请输入联系方式"_s);
    QCOMPARE(dialog.focusWidget(), contact);
    QTRY_COMPARE(toastText(), QString());
    contact->setText("1"_s);
    QVERIFY(dialog.isVisible());
    press(dialog, "btnSubmit");
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QTRY_COMPARE(toastText(), "提交成功"_s);
}

// The chosen picture is seen on the button, whatever its name holds.
void TestMenus::feedbackImage()
{
    QTemporaryDir dir;
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(Qt::green);
    for (const char *name : {"plain.png", "a (1) #2.png", "it's;墨\\\"x\".png"}) {
        const QString path = dir.filePath(QString::fromUtf8(name));
        QVERIFY(image.save(path));
        FeedbackDialog dialog;
        FileChooser::setNextAnswer({path});
        press(dialog, "btnImage2");
        const QImage look = child(dialog, "btnImage2")->grab().toImage();
        QVERIFY2(look.pixelColor(look.rect().center()) == QColor(Qt::green), name);
    }
}

void TestMenus::feedbackOffersImages()
{
    FeedbackDialog dialog;
    QStringList patterns;
    QTimer::singleShot(0, this, [&patterns] {
        auto *chooser = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        QVERIFY(chooser != nullptr);
        patterns = chooser->findChild<QFileSystemModel *>()->nameFilters();
        chooser->reject();
    });
    press(dialog, "btnImage1");
    QCOMPARE(patterns, QStringList({"*png"_s, "*jpg"_s}));
}

void TestMenus::links()
{
    ProductContact contact;
    contact.serviceNumber = "12345"_s;
    QWidget window;
    QDesktopServices::setUrlHandler("tencent"_s, this, "openUrl");
    CustomerService popup(&window, contact);
    popup.setAttribute(Qt::WA_DeleteOnClose, false);
    press(popup, "wbnQQ");
    QCOMPARE(m_opened.toString(), "tencent:message/?uin=12345&Menu=yes&Site="_s);
    QDesktopServices::unsetUrlHandler("tencent"_s);

    QDesktopServices::setUrlHandler("https"_s, this, "openUrl");
    contact.webSite = QUrl("https://example.org/"_s);
    AboutMeDialog about(nullptr, contact);
    QCOMPARE(child<QLabel>(about, "lblVersion")->text(), "2.0.5"_s);
    press(about, "btnOfficalWeb");
    QCOMPARE(m_opened, contact.webSite);
    QVERIFY(child(AboutMeDialog(), "btnOfficalWeb")->isHidden());
    QDesktopServices::unsetUrlHandler("https"_s);

    CustomerService unset(&window, ProductContact());
    unset.setAttribute(Qt::WA_DeleteOnClose, false);
    QVERIFY(child(unset, "wbnQQ")->isHidden());
    QVERIFY(child(unset, "lblPhone")->isHidden());
}

QTEST_MAIN(TestMenus)
#include "tst_menus.moc"
