// SPDX-License-Identifier: MIT
#include "controls/filechooser.h"
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "MediaKits/AppInstance/LocalStore/functionsettings.h"
#include "MediaKits/FunctionPage/ScreenRecord/screencapfuncionpage.h"
#include "MediaKits/FunctionPage/ScreenRecord/windowcapwidget.h"
#include "resources/look.h"
#include "support/casename.h"
#include "support/desktop.h"
#include "support/guisupport.h"
#include "support/mediaprobe.h"
#include "support/testfile.h"
#include "support/testmedia.h"

#include <QAbstractButton>
#include <QDesktopServices>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QTemporaryDir>
#include <QTime>
#include <QtTest>

namespace {

constexpr int limitMs = 20000;
const QColor wallColour("#20A060");
const QColor pageColour("#C000C0");

Screencap &engine()
{
    return Screencap::instance();
}

} // namespace

// The page in a window of its own before a coloured wall, driven by mouse and keys, with the real
// tools.
class TestRecordPage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void choicesReachTheEngine();
    void folderIsMadeAtOnce();
    void areaIsRecorded();
    void programIsNotInThePicture();
    void windowIsPicked();
    void cancelBringsThePageBack();
    void missingSoundIsToldBefore();
    void waylandIsNotRecorded();
    void failureIsTold();
    void noCameraBreaksNothing();
    void openUrl(const QUrl &url) { m_opened = url; }

private:
    QString folder() const { return m_folder->filePath("录 像"_s); }
    template<class Widget = QAbstractButton>
    Widget *part(const char *name) const
    {
        return child<Widget>(*m_page, name);
    }
    bool isReady() const { return part<QWidget>("wdtSettting")->isEnabled(); }
    QString clock() const { return part<QLabel>("lblTime")->text(); }
    QString startText() const { return part("wbnCapStartPause")->text(); }
    // In pixels of the screen.
    int ratio() const { return m_page->devicePixelRatio(); }
    WindowCapWidget *overlay() const
    {
        return qobject_cast<WindowCapWidget *>(visibleWindow("WindowCapWidget"));
    }
    // The countdown runs in an event loop of its own.
    template<class Act>
    void inCountdown(Act act) const
    {
        auto *looks = new QTimer(m_page.get());
        connect(looks, &QTimer::timeout, looks, [looks, act] {
            if (!visibleWindow("CountdownWnd"))
                return;
            looks->stop();
            looks->deleteLater();
            act();
        });
        looks->start(20);
    }
    void awaitRecording(const QString &time);
    void stopByKey();
    QString onlyFile() const;
    // Every frame has the colour at the points.
    static void allHave(const QString &file, const QVector<QPoint> &points, const QColor &colour);

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QWidget> m_wall;
    std::unique_ptr<ScreencapFuncionPage> m_page;
    QUrl m_opened;
};

void TestRecordPage::initTestCase()
{
    QApplication::setQuitOnLastWindowClosed(false);
    QVERIFY(Look::apply());
    AppIni::instance().setValue(AppIni::Key::PreviewShowWhenAdded, false);
}

void TestRecordPage::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    FunctionSettings::instance().setValue(FunctionSection::screenCap, FunctionKey::outPath,
                                          folder());
    m_wall = std::make_unique<QWidget>(nullptr, Qt::FramelessWindowHint);
    m_wall->setStyleSheet("background: "_s + wallColour.name());
    m_wall->setGeometry(0, 0, 1920, 1080);
    m_wall->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_wall.get()));
    m_page = std::make_unique<ScreencapFuncionPage>();
    m_page->setAttribute(Qt::WA_StyledBackground);
    m_page->setStyleSheet("ScreencapFuncionPage { background: %1 }"_s.arg(pageColour.name()));
    m_page->resize(900, 640);
    m_page->move(m_wall->screen()->availableGeometry().center() - m_page->rect().center());
    m_page->show();
    QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
    part("rbSDNone")->click();
    // What lay below the word on missing sound moves up.
    QCoreApplication::sendPostedEvents();
}

void TestRecordPage::cleanup()
{
    engine().stop();
    QTRY_COMPARE_WITH_TIMEOUT(engine().state(), Screencap::CapIdle, limitMs);
    m_page.reset();
    m_wall.reset();
}

void TestRecordPage::awaitRecording(const QString &time)
{
    QTRY_COMPARE_WITH_TIMEOUT(startText(), "暂停录制"_s, limitMs);
    QVERIFY(!isReady());
    QVERIFY(!part<QWidget>("wdtFolder")->isEnabled());
    QVERIFY(part("wbnCapStop")->isEnabled());
    QTRY_VERIFY_WITH_TIMEOUT(clock() >= time, limitMs);
}

void TestRecordPage::stopByKey()
{
    Desktop::key("ctrl+alt+r");
    QTRY_VERIFY_WITH_TIMEOUT(isReady(), limitMs);
    QCOMPARE(startText(), "开始录制"_s);
    QVERIFY(!part("wbnCapStop")->isEnabled());
    QCOMPARE(clock(), "00:00:00"_s);
    QTRY_VERIFY(!m_page->isMinimized());
    QVERIFY(!overlay());
}

QString TestRecordPage::onlyFile() const
{
    const QStringList files = QDir(folder()).entryList(QDir::Files);
    return files.size() == 1 ? folder() + u'/' + files.first() : files.join(u'|');
}

void TestRecordPage::allHave(const QString &file, const QVector<QPoint> &points,
                             const QColor &colour)
{
    constexpr int frameBytes = 2 * 2 * 3;
    for (const QPoint &point : points) {
        const QByteArray bytes = decodedMedia(
            file, "-vf crop=2:2:%1:%2 -f rawvideo -pix_fmt rgb24"_s.arg(point.x()).arg(point.y()));
        QVERIFY(bytes.size() > 10 * frameBytes);
        for (int i = 0; i + frameBytes <= bytes.size(); i += frameBytes) {
            const QColor seen(uchar(bytes[i]), uchar(bytes[i + 1]), uchar(bytes[i + 2]));
            QVERIFY2(Desktop::isLike(seen, colour), qPrintable(seen.name()));
        }
    }
}

void TestRecordPage::choicesReachTheEngine()
{
    QCOMPARE(engine().capMode(), int(Screencap::FullMode));
    QCOMPARE(engine().outputSuffix(), ".mp4"_s);
    QCOMPARE(engine().definition(), 1);
    QVERIFY(part<QLineEdit>("ledtWndID")->isHidden());
    const std::pair<const char *, int> sounds[] = {
        {"rbSDAll", 3}, {"rbSDMicro", 2}, {"rbSDSYS", 1}, {"rbSDNone", 0}};
    for (const auto &[name, flags] : sounds) {
        part(name)->click();
        QCOMPARE(engine().audioFlags(), flags);
    }
    const char *const definitions[] = {"rbDefSD", "rbDefHD", "rbDefOrg"};
    for (int index = 0; index < 3; ++index) {
        part(definitions[index])->click();
        QCOMPARE(engine().definition(), index);
    }
    part("rbFMTFLV")->click();
    QCOMPARE(engine().outputSuffix(), ".flv"_s);
    part("rbFMTMP4")->click();
    QCOMPARE(engine().outputSuffix(), ".mp4"_s);
    part("rbWindow")->click();
    QCOMPARE(engine().capMode(), int(Screencap::WindowMode));
    part<QLineEdit>("ledtWndID")->setText("2a0000f"_s);
    emit part<QLineEdit>("ledtWndID")->editingFinished();
    QCOMPARE(engine().capTarget().toUInt(), 0x2a0000fU);
}

void TestRecordPage::folderIsMadeAtOnce()
{
    auto *field = part<QLineEdit>("ledtCustomPath");
    QCOMPARE(engine().outputDir(), folder());
    const QString chosen = m_folder->filePath("a/b"_s);
    FileChooser::setNextAnswer({chosen});
    press(*m_page, "btnChangePath");
    QVERIFY(QFileInfo(chosen).isDir());
    QCOMPARE(engine().outputDir(), chosen);
    QCOMPARE(FunctionSettings::instance().value(FunctionSection::screenCap, FunctionKey::outPath),
             QVariant(chosen));
    // Not for each letter on the way.
    field->setFocus();
    field->selectAll();
    const QString typed = m_folder->filePath("typed"_s);
    QTest::keyClicks(field, typed);
    QCOMPARE(QDir(m_folder->path()).entryList({"t*"_s}, QDir::Dirs), QStringList());
    QTest::keyClick(field, Qt::Key_Return);
    QVERIFY(QFileInfo(typed).isDir());
    QCOMPARE(engine().outputDir(), typed);

    QDesktopServices::setUrlHandler("file"_s, this, "openUrl");
    press(*m_page, "btnOpenPath");
    QDesktopServices::unsetUrlHandler("file"_s);
    QCOMPARE(m_opened, QUrl::fromLocalFile(typed));
}

// A pause isn't in the file, and no frame has a line of the frame around the area.
void TestRecordPage::areaIsRecorded()
{
    part("rbArea")->click();
    Desktop::click(*part("wbnCapStartPause"));
    QTRY_VERIFY(overlay());
    QVERIFY(m_page->isMinimized());
    bool isCounted = false;
    inCountdown([&isCounted] { isCounted = true; });
    Desktop::drag({400, 300}, {720, 540});
    awaitRecording("00:00:01"_s);
    const QRect area = engine().capTarget().toRect();
    QCOMPARE(area.topLeft(), QPoint(400, 300));
    // Both ends of the drag are in it, in whole pixels of the program.
    QCOMPARE(area.size(), QSize(320, 240) + QSize(ratio(), ratio()));
    const QPoint frame = area.topLeft() + QPoint(50, -2 * ratio());
    QVERIFY(isCounted);
    QVERIFY(Desktop::isLike(Desktop::seenAt(frame), "#0064CC"));

    Desktop::key("ctrl+alt+p");
    QTRY_COMPARE(startText(), "继续录制"_s);
    QTRY_VERIFY(Desktop::isLike(Desktop::seenAt(frame), "#F53F31"));
    const QString pausedAt = clock();
    QTest::qWait(2500); // longer than the clock would stand still by chance
    QCOMPARE(clock(), pausedAt);
    Desktop::key("ctrl+alt+p");
    QTRY_COMPARE(startText(), "暂停录制"_s);
    QTRY_VERIFY_WITH_TIMEOUT(clock() >= "00:00:03"_s, limitMs);
    const int seconds = QTime(0, 0).secsTo(QTime::fromString(clock(), "hh:mm:ss"_s));
    stopByKey();

    const QString file = onlyFile();
    const ProbedFile probed = probeMedia(file);
    QCOMPARE(probed.size(), QSize(area.width() & ~1, area.height() & ~1));
    QVERIFY2(qAbs(probed.seconds - seconds) < 1.5, qPrintable(QString::number(probed.seconds)));
    // The pointer has been left at the fourth corner.
    allHave(file, {QPoint(0, 0), QPoint(318, 0), QPoint(0, 238)}, wallColour);
    QCOMPARE(child<QLabel>(*part<QWidget>("wdtSaved"), "lblText")->isVisible(), true);
}

void TestRecordPage::programIsNotInThePicture()
{
    part("rbDefOrg")->click();
    const QPoint pagePoint = (m_page->geometry().bottomLeft() + QPoint(8, -100)) * ratio();
    QTRY_VERIFY(Desktop::isLike(Desktop::seenAt(pagePoint), pageColour));
    const QScreen &screen = *QGuiApplication::primaryScreen();
    const QPoint clockPoint = screen.availableGeometry().center() * ratio();
    Desktop::click(*part("wbnCapStartPause"));
    awaitRecording("00:00:01"_s);
    stopByKey();
    const QString file = onlyFile();
    QCOMPARE(probeMedia(file).size(), screen.size() * ratio());
    allHave(file, {pagePoint, clockPoint, clockPoint + QPoint(20, 0)}, wallColour);
}

void TestRecordPage::windowIsPicked()
{
    QWidget other;
    other.setStyleSheet("background: #E0A000"_s);
    other.setGeometry(100, 100, 301, 203);
    other.show();
    QVERIFY(QTest::qWaitForWindowExposed(&other));
    part("rbWindow")->click();
    Desktop::key("ctrl+alt+r");
    QTRY_VERIFY(overlay());
    Desktop::click(other.geometry().center() * ratio());
    awaitRecording("00:00:01"_s);
    QCOMPARE(engine().capTarget().toUInt(), uint(other.winId()));
    QCOMPARE(part<QLineEdit>("ledtWndID")->text(), QString::number(other.winId(), 16));
    QVERIFY(!overlay());
    stopByKey();
    const QString file = onlyFile();
    const QSize size = other.size() * ratio();
    QCOMPARE(probeMedia(file).size(), QSize(size.width() & ~1, size.height() & ~1));
    allHave(file, {{250, 160}}, "#E0A000");
}

void TestRecordPage::cancelBringsThePageBack()
{
    const auto isBack = [this] {
        return isReady() && m_page->isVisible() && !m_page->isMinimized() && !overlay() &&
               !visibleWindow("CountdownWnd");
    };
    part("rbArea")->click();
    for (const char *key : {"Escape", "ctrl+alt+r"}) {
        const CaseName inCase(key);
        Desktop::click(*part("wbnCapStartPause"));
        QTRY_VERIFY(overlay());
        Desktop::key(key);
        QTRY_VERIFY(isBack());
        QTRY_VERIFY(m_page->isActiveWindow());

        Desktop::click(*part("wbnCapStartPause"));
        QTRY_VERIFY(overlay());
        inCountdown([key] { Desktop::key(key); });
        Desktop::drag({100, 100}, {300, 300});
        QTRY_VERIFY(isBack());
        QTRY_VERIFY(m_page->isActiveWindow());
    }
    QCOMPARE(engine().state(), Screencap::CapIdle);
    QCOMPARE(startText(), "开始录制"_s);
    QVERIFY(!part("wbnCapStartPause")->isChecked());
    QVERIFY(!QFileInfo::exists(folder()) || QDir(folder()).isEmpty());
}

// There is no sound server on the test's desktop.
void TestRecordPage::missingSoundIsToldBefore()
{
    part("rbSDSYS")->click();
    const auto *remarks = part<QLabel>("lblRemarks");
    QVERIFY(remarks->isVisible());
    QVERIFY(remarks->text().contains("声音"_s));
    const QString told = askedBy([this] { press(*m_page, "wbnCapStartPause"); }, "btnOK");
    QVERIFY2(told.contains("声音"_s), qPrintable(told));
    awaitRecording("00:00:01"_s);
    stopByKey();
    QVERIFY(probeMedia(onlyFile()).audio.isEmpty());
    part("rbSDNone")->click();
    QVERIFY(!remarks->isVisible());
}

void TestRecordPage::waylandIsNotRecorded()
{
    qputenv("WAYLAND_DISPLAY", "wayland-0");
    const QString told = askedBy([this] { press(*m_page, "wbnCapStartPause"); }, "btnOK");
    qunsetenv("WAYLAND_DISPLAY");
    QVERIFY2(told.contains("Wayland"_s), qPrintable(told));
    QVERIFY(isReady() && !m_page->isMinimized() && !visibleWindow("CountdownWnd"));
    QCOMPARE(engine().state(), Screencap::CapIdle);
}

void TestRecordPage::failureIsTold()
{
    const QString file = m_folder->filePath("file"_s);
    writeTestFile(file);
    part<QLineEdit>("ledtCustomPath")->setText(file + "/below"_s);
    QVERIFY(part<QLabel>("lblRemarks")->text().contains("无法创建"_s));
    QString title;
    QString text;
    whenModal("MediaMessageBox", [&](QWidget &box) {
        title = box.windowTitle();
        text = child<QLabel>(box, "lblText")->text();
        press(box, "btnOK");
    });
    press(*m_page, "wbnCapStartPause");
    QTRY_COMPARE_WITH_TIMEOUT(title, "无法录制"_s, limitMs);
    QVERIFY2(text.contains("below"_s), qPrintable(text));
    QTRY_VERIFY(isReady() && !m_page->isMinimized());
    part<QLineEdit>("ledtCustomPath")->setText(folder());
    QVERIFY(!part<QLabel>("lblRemarks")->isVisible());
}

void TestRecordPage::noCameraBreaksNothing()
{
    part("rbCamOn")->click();
    QCOMPARE(part<QLabel>("lblCameraHint")->text(), "没有找到摄像头"_s);
    QVERIFY(part("rbCamOn")->isChecked());
    QVERIFY(!visibleWindow("CameraPreviewWnd"));
    part("rbCamOff")->click();
    QVERIFY(part<QLabel>("lblCameraHint")->text().isEmpty());
}

QTEST_MAIN(TestRecordPage)
#include "tst_recordpage.moc"
