// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/removedir.h"
#include "MediaKits/AppInstance/LocalStore/tempmarker.h"
#include "support/testfile.h"

#include <QtTest>

class TestRemoveDir : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_dir.reset(new QTemporaryDir);
        writeTestFile(path("outside/precious"));
    }

    void removesWhateverItHolds()
    {
        writeTestFile(path("work/.hidden/file"));
        writeTestFile(path("work/a/b/readonly"));
        writeTestFile(path("work/locked/file"));
        QFile::setPermissions(path("work/a/b/readonly"), QFile::ReadOwner);
        QFile::setPermissions(path("work/a/b"), QFile::ReadOwner | QFile::ExeOwner);
        QFile::setPermissions(path("work/locked"), QFile::Permissions());
        QVERIFY(removeDirRecursively(path("work/")));
        QVERIFY(!QFileInfo::exists(path("work")));
    }

    void removesEmptyParentsOnly()
    {
        QVERIFY(QDir().mkpath(path("outside/one/two/three")));
        QVERIFY(removeDirRecursively(path("outside/one/two/three")));
        QVERIFY(!QFileInfo::exists(path("outside/one")));
        QVERIFY(removeDirRecursively(QString()));
        QVERIFY(!removeDirRecursively(path("outside/precious")));
    }

    void stopsAtTheMarker()
    {
        const QString marker = path("films/new/") + tempMarkerName();
        for (const QString &dir : {marker, marker + "/1/2"_s}) {
            writeTestFile(dir + "/part.ts"_s);
            QVERIFY(removeDirRecursively(dir));
            QVERIFY(!QFileInfo::exists(marker));
            QVERIFY(QFileInfo(path("films/new")).isDir());
        }
    }

    void leavesTheTargetsOfLinks()
    {
        QVERIFY(QDir().mkpath(path("work")));
        QVERIFY(QFile::setPermissions(path("outside/precious"), QFile::ReadOwner));
        const QFile::Permissions before = QFile::permissions(path("outside/precious"));
        QVERIFY(QFile::link(path("outside"), path("work/directory")));
        QVERIFY(QFile::link(path("outside/precious"), path("work/file")));
        QVERIFY(QFile::link(path("outside/missing"), path("work/dangling")));
        QVERIFY(removeDirRecursively(path("work")));
        QVERIFY(!QFileInfo::exists(path("work")));
        QVERIFY(QFile::link(path("outside"), path("link")));
        QVERIFY(removeDirRecursively(path("link/")));
        QVERIFY(!QFileInfo(path("link")).isSymLink());
        QCOMPARE(QFile::permissions(path("outside/precious")), before);
    }

    void cleanup() { QVERIFY(QFile::exists(path("outside/precious"))); }

private:
    QString path(const char *name) const { return m_dir->filePath(QString::fromLatin1(name)); }

    QScopedPointer<QTemporaryDir> m_dir;
};

QTEST_GUILESS_MAIN(TestRemoveDir)
#include "tst_removedir.moc"
