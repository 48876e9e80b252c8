// SPDX-License-Identifier: MIT
#include "MediaKits/Manifest/manifestconfig.h"
#include "MediaKits/Manifest/playermanifest.h"
#include "support/testfile.h"

#include <QtTest>

class TestManifest : public QObject
{
    Q_OBJECT

private slots:
    void settings()
    {
        const QTemporaryDir dir;
        const QString path = dir.filePath("p.manifest"_s);
        const QByteArray manifest("<?xml version='1.0' encoding='UTF-8'?>\n"
                                  "<assembly>\n"
                                  "    <description>播放器</description>\n"
                                  "    <application>\n"
                                  "        <windowsSettings>\n"
                                  "            <dpiAware>false</dpiAware>\n"
                                  "            <dpiAwareness>unaware</dpiAwareness>\n"
                                  "        </windowsSettings>\n"
                                  "    </application>\n"
                                  "</assembly>\n");
        QByteArray byPlayer = manifest;
        byPlayer.replace("false", "true").replace("unaware", "system");
        writeTestFile(path, manifest);
        configPlayerManifest(PlayerScaling::ByPlayer, path);
        QCOMPARE(contentOf(path), byPlayer);
        configPlayerManifest(PlayerScaling::BySystem, path);
        QCOMPARE(contentOf(path), manifest);

        // Elements that it lacks, no section, not XML.
        for (const QByteArray &text :
             {manifest, QByteArray("<a>  <b/></a>"), manifest.chopped(20)}) {
            writeTestFile(path, text);
            ManifestConfig::configWindowsSettings(path, {{"gdiScaling"_s, true}});
            QCOMPARE(contentOf(path), text);
        }
        configPlayerManifest(PlayerScaling::ByPlayer, dir.filePath("none"_s));
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList("p.manifest"_s));
    }
};

QTEST_GUILESS_MAIN(TestManifest)
#include "tst_manifest.moc"
