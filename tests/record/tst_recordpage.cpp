// SPDX-License-Identifier: MIT
#include "controls/filechooser.h"
#include "MediaKits/AppInstance/LocalStore/functionsettings.h"
#include "recordpagetest.h"
#include "support/casename.h"
#include "support/desktop.h"
#include "support/testfile.h"

#include <QDesktopServices>
#include <QLineEdit>

/// What the page says and does around a recording.
class TestRecordPage : public RecordPageTest
{
    Q_OBJECT

private slots:
    void choicesReachTheEngine();
    void folderIsMadeAtOnce();
    void cancelBringsThePageBack();
    void waylandIsNotRecorded();
    void failureIsTold();
    void noCameraBreaksNothing();
    void openUrl(const QUrl &url) { m_opened = url; }

private:
    QUrl m_opened;
};

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
