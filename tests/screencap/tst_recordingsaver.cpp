// SPDX-License-Identifier: MIT
#include "screencap/recordingsaver.h"
#include "support/mediaprobe.h"
#include "support/testmedia.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

// Pieces as tools leave them that were killed.
class TestRecordingSaver : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void leavesOutPiecesWithoutAFrame();
    void joinsPiecesThatBeginLate();
    void knowsWhenNothingWasRecorded();
    void losesNoPiece_data();
    void losesNoPiece();

private:
    // @param beginSecond time of its first frame
    QString addPiece(int beginSecond = 0);
    // What is on the disk before the first frame is.
    void addHeader();
    // Runs the saver; the names of what is in the output folder then.
    QStringList save();

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<RecordingFolder> m_folder;
    std::unique_ptr<RecordingSaver> m_saver;
};

void TestRecordingSaver::init()
{
    m_saver.reset();
    m_dir = std::make_unique<QTemporaryDir>();
    m_folder = RecordingFolder::create(m_dir->filePath("rec.mp4"_s));
    QVERIFY(m_folder);
}

QString TestRecordingSaver::addPiece(int beginSecond)
{
    const QString path = m_folder->newPiece();
    makeMedia(
        "-f lavfi -i testsrc=s=160x120:r=30:d=2 -c:v libx264 -g 30 -output_ts_offset %1 @"_s.arg(
            beginSecond),
        {path});
    return path;
}

void TestRecordingSaver::addHeader()
{
    QFile piece(addPiece());
    QVERIFY(piece.open(QIODevice::ReadWrite));
    const int firstCluster = piece.readAll().indexOf("\x1f\x43\xb6\x75");
    QVERIFY(firstCluster > 0 && piece.resize(firstCluster));
}

QStringList TestRecordingSaver::save()
{
    m_saver = std::make_unique<RecordingSaver>(std::move(m_folder));
    QSignalSpy ends(m_saver.get(), &RecordingSaver::done);
    m_saver->start();
    [[maybe_unused]] const bool isOver = ends.wait(30000);
    return QDir(m_dir->path()).entryList(QDir::Files, QDir::Name);
}

void TestRecordingSaver::leavesOutPiecesWithoutAFrame()
{
    addPiece();
    addHeader();
    addPiece();
    addHeader();
    QCOMPARE(save(), QStringList{"rec.mp4"_s});
    const double seconds = probeMedia(m_saver->files().first()).seconds;
    QVERIFY2(seconds > 3.8 && seconds < 4.2, qPrintable(QString::number(seconds)));
    QVERIFY2(m_saver->remark().isEmpty(), qPrintable(m_saver->remark()));
    QCOMPARE(entriesOf(m_dir->path()), QStringList{"rec.mp4"_s});
}

// On a busy machine the screen opens behind the moment at which the piece begins.
void TestRecordingSaver::joinsPiecesThatBeginLate()
{
    addPiece();
    addPiece(1);
    QCOMPARE(save(), QStringList{"rec.mp4"_s});
    QVERIFY2(m_saver->remark().isEmpty(), qPrintable(m_saver->remark()));
}

void TestRecordingSaver::knowsWhenNothingWasRecorded()
{
    addHeader();
    QVERIFY(save().isEmpty());
    QVERIFY(m_saver->files().isEmpty() && m_saver->remark().isEmpty());
    QVERIFY(entriesOf(m_dir->path()).isEmpty());
}

void TestRecordingSaver::losesNoPiece_data()
{
    QTest::addColumn<QString>("fault");
    QTest::newRow("one can't be read") << "garbage"_s;
    // A name that ffmpeg's list doesn't take: it ends there, and calls that a success.
    QTest::newRow("joining ends early") << "name"_s;
}

void TestRecordingSaver::losesNoPiece()
{
    QFETCH(const QString, fault);
    addPiece();
    QFile broken(addPiece());
    if (fault == "garbage"_s) {
        QVERIFY(broken.open(QIODevice::ReadWrite));
        QVERIFY(broken.write(QByteArray(int(broken.size()), 'x')) > 0);
        broken.close();
    } else {
        QVERIFY(broken.rename(broken.fileName().replace(".mkv"_s, "'.mkv"_s)));
    }
    addPiece();
    const QStringList files = save();
    QCOMPARE(files.size(), 3);
    QCOMPARE(m_saver->files().size(), 3);
    QVERIFY(!m_saver->remark().isEmpty());
    QVERIFY(probeMedia(m_saver->files().last()).seconds > 1.8);
    QCOMPARE(entriesOf(m_dir->path()), files); // the folder is gone
}

QTEST_GUILESS_MAIN(TestRecordingSaver)
#include "tst_recordingsaver.moc"
