// SPDX-License-Identifier: MIT
#include "recordpagetest.h"
#include "support/desktop.h"
#include "support/mediaprobe.h"
#include "support/testmedia.h"

#include <QScreen>

/// What the page's recordings show.
class TestRecordedPictures : public RecordPageTest
{
    Q_OBJECT

private slots:
    void areaIsRecorded();
    void programIsNotInThePicture();
    void windowIsPicked();
    void missingSoundIsToldBefore();

private:
    QString onlyFile() const;
    // Every frame has the colour at the points.
    static void allHave(const QString &file, const QVector<QPoint> &points, const QColor &colour);
};

QString TestRecordedPictures::onlyFile() const
{
    const QStringList files = QDir(folder()).entryList(QDir::Files);
    return files.size() == 1 ? folder() + u'/' + files.first() : files.join(u'|');
}

void TestRecordedPictures::allHave(const QString &file, const QVector<QPoint> &points,
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

// A pause isn't in the file, and no frame has a line of the frame around the area.
void TestRecordedPictures::areaIsRecorded()
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

void TestRecordedPictures::programIsNotInThePicture()
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

void TestRecordedPictures::windowIsPicked()
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

// There is no sound server on the test's desktop.
void TestRecordedPictures::missingSoundIsToldBefore()
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

QTEST_MAIN(TestRecordedPictures)
#include "tst_recordedpictures.moc"
