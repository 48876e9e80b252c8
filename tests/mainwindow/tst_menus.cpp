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
#include "support/desktop.h"
#include "support/guisupport.h"

#include <QDesktopServices>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QtTest>

namespace {

QString toastText()
{
    for (const QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->inherits("Toast") && widget->isVisible())
            return widget->findChild<QLabel *>()->text();
    }
    return {};
}

} // namespace

class TestMenus : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void menuRows();
    void rowsOpenDialogs_data();
    void rowsOpenDialogs();
    void feedbackLimit_data();
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
        QTest::qWait(0);
        return menu ? QStringList() : rows;
    };
    QStringList rows = {QStringLiteral("注册/登录"), QStringLiteral("关于我们"),
                        QStringLiteral("检查更新"), QStringLiteral("投诉反馈")};
    int full = 0;
    QCOMPARE(rowsOfNewMenu(&full), rows);

    UserInfoManager &user = UserInfoManager::instance();
    user.setUserInfoJson(QStringLiteral(R"({"name":"墨客"})"));
    user.markLoggedIn();
    QVERIFY(!child(window, "btnLogin")->isVisible());
    QCOMPARE(child<QLabel>(window, "lblUser")->text(), QStringLiteral("墨客"));
    rows.removeFirst();
    int shorter = 0;
    QCOMPARE(rowsOfNewMenu(&shorter), rows);
    QCOMPARE(full - shorter, 34);
    user.logout();
    QVERIFY(child(window, "btnLogin")->isVisible());
    for (const bool isReached : {false, true}) {
        ProductContact contact;
        contact.phone = isReached ? QStringLiteral("12345") : QString();
        const AppMenu menu(&window, contact);
        QCOMPARE(child(menu, "btnToCService")->isHidden(), !isReached);
    }
}

void TestMenus::rowsOpenDialogs_data()
{
    QTest::addColumn<QByteArray>("row");
    QTest::addColumn<QByteArray>("opened");
    QTest::newRow("login") << QByteArray("btnRegister") << QByteArray("WebLoginDialog");
    QTest::newRow("about") << QByteArray("btnAboutMe") << QByteArray("AboutMeDialog");
    QTest::newRow("update") << QByteArray("btnUpdate") << QByteArray("MediaMessageBox");
    QTest::newRow("feedback") << QByteArray("btnFeedback") << QByteArray("FeedbackDialog");
    QTest::newRow("service") << QByteArray("btnToCService") << QByteArray("CustomerService");
    QTest::newRow("exit") << QByteArray("btnClose") << QByteArray("ExitTipsDialog");
}

// What a row opens closes by Escape, and neither it nor the menu stays.
void TestMenus::rowsOpenDialogs()
{
    QFETCH(QByteArray, row);
    QFETCH(QByteArray, opened);
    const SystemTray tray;
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QByteArray seen;
    QTimer::singleShot(0, this, [&] {
        QWidget *top = QApplication::activeModalWidget();
        if (top == nullptr)
            top = QApplication::activePopupWidget();
        QVERIFY(QTest::qWaitForWindowExposed(top));
        seen = top->metaObject()->className();
        QTest::keyClick(top, Qt::Key_Escape);
        QTRY_VERIFY(QApplication::activeModalWidget() != top);
    });
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
}

void TestMenus::feedbackLimit_data()
{
    QTest::addColumn<QString>("start");
    QTest::addColumn<int>("cursor");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("result");
    QTest::addColumn<int>("cursorAfter");
    const QString a200(200, QLatin1Char('a'));
    const QString a199(199, QLatin1Char('a'));
    const QString emoji = QString::fromUtf8("\xf0\x9f\x98\x80");
    QTest::newRow("fits") << a199 << 0 << QStringLiteral("b") << QLatin1Char('b') + a199 << 1;
    QTest::newRow("in front") << a200 << 0 << QStringLiteral("bb") << a200 << 0;
    QTest::newRow("inside, partly")
        << a199 << 100 << QStringLiteral("bcd")
        << QString(100, QLatin1Char('a')) + QLatin1Char('b') + QString(99, QLatin1Char('a')) << 101;
    QTest::newRow("half a character") << a199 << 199 << emoji << a199 << 199;
}

void TestMenus::feedbackLimit()
{
    QFETCH(QString, start);
    QFETCH(int, cursor);
    QFETCH(QString, typed);
    FeedbackDialog dialog;
    auto *edit = child<QPlainTextEdit>(dialog, "plainTextEdit");
    edit->setPlainText(start);
    QTextCursor place = edit->textCursor();
    place.setPosition(cursor);
    edit->setTextCursor(place);
    edit->insertPlainText(typed);
    QTEST(edit->toPlainText(), "result");
    QTEST(edit->textCursor().position(), "cursorAfter");
    QCOMPARE(child<QLabel>(dialog, "lblCharCount")->text(),
             QStringLiteral("%1/200").arg(edit->toPlainText().size()));
}

void TestMenus::feedbackSubmit()
{
    FeedbackDialog dialog;
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    auto *edit = child<QPlainTextEdit>(dialog, "plainTextEdit");
    auto *contact = child<QLineEdit>(dialog, "lineEdit");

    press(dialog, "btnSubmit");
    QTRY_COMPARE(toastText(), QStringLiteral("请输入建议反馈"));
    QCOMPARE(dialog.focusWidget(), edit);
    QTRY_COMPARE(toastText(), QString());
    edit->setPlainText(QStringLiteral("很好"));
    press(dialog, "btnSubmit");
    QTRY_COMPARE(toastText(), QStringLiteral("请输入联系方式"));
    QCOMPARE(dialog.focusWidget(), contact);
    QTRY_COMPARE(toastText(), QString());
    contact->setText(QStringLiteral("1"));
    QVERIFY(dialog.isVisible());
    press(dialog, "btnSubmit");
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QTRY_COMPARE(toastText(), QStringLiteral("提交成功"));
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
    QCOMPARE(patterns, QStringList({QStringLiteral("*png"), QStringLiteral("*jpg")}));
}

void TestMenus::links()
{
    ProductContact contact;
    contact.serviceNumber = QStringLiteral("12345");
    QWidget window;
    QDesktopServices::setUrlHandler(QStringLiteral("tencent"), this, "openUrl");
    CustomerService popup(&window, contact);
    popup.setAttribute(Qt::WA_DeleteOnClose, false);
    press(popup, "wbnQQ");
    QCOMPARE(m_opened.toString(), QStringLiteral("tencent:message/?uin=12345&Menu=yes&Site="));
    QDesktopServices::unsetUrlHandler(QStringLiteral("tencent"));

    QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "openUrl");
    contact.webSite = QUrl(QStringLiteral("https://example.org/"));
    AboutMeDialog about(nullptr, contact);
    QCOMPARE(child<QLabel>(about, "lblVersion")->text(), QStringLiteral("2.0.5"));
    press(about, "btnOfficalWeb");
    QCOMPARE(m_opened, contact.webSite);
    QVERIFY(child(AboutMeDialog(), "btnOfficalWeb")->isHidden());
    QDesktopServices::unsetUrlHandler(QStringLiteral("https"));

    CustomerService unset(&window, ProductContact());
    unset.setAttribute(Qt::WA_DeleteOnClose, false);
    QVERIFY(child(unset, "wbnQQ")->isHidden());
    QVERIFY(child(unset, "lblPhone")->isHidden());
}

QTEST_MAIN(TestMenus)
#include "tst_menus.moc"
