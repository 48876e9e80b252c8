// SPDX-License-Identifier: MIT
#include "controls/filechooser.h"
#include "MediaKits/FunctionPage/Framework/Intake/comtoolbargpage.h"
#include "MediaKits/FunctionPage/Framework/Intake/fileaddgpage.h"
#include "MediaKits/FunctionPage/Framework/Intake/mediafilechoice.h"
#include "MediaKits/FunctionPage/Framework/Intake/mediaimportdialog.h"
#include "MediaKits/MediaFormats/mediaformats.h"
#include "MediaKits/MediaTasksManager/mediatasksmanager.h"
#include "MediaKits/MediaTasksManager/videoimagepicktask.h"
#include "MediaKits/Player/thumbnail.h"
#include "platform/undecodablenames.h"
#include "support/testfile.h"

#include <QFrame>
#include <QProgressBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QtTest>

#include <cstdio>

class TestIntake : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qRegisterMetaType<FileAddType>();
        for (const char *name : {"a.MP4", "b.mp3", "c.txt", "d.mp4/inside.mp4"})
            writeTestFile(path(name));
    }

    void drops()
    {
        const QUrl video = QUrl::fromLocalFile(path("a.MP4"));
        const QUrl text = QUrl::fromLocalFile(path("c.txt"));
        const QUrl folder = QUrl::fromLocalFile(path("d.mp4"));
        const QUrl remote("http://host/a.mp4"_s);
        for (const auto &urls : {QList<QUrl>{text, folder, video}, {text, folder}, {remote}}) {
            const bool accepted = urls.contains(video);
            QMimeData data;
            data.setUrls(urls);
            FileAddGPage page;
            page.setAllowedSuffixes(videoFormats());
            QSignalSpy added(&page, &FileAddGPage::filesAddActived);
            const QWidget *zone = page.findChild<QFrame *>("frmDropZone"_s);
            QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
            enter.setAccepted(false);
            QCoreApplication::sendEvent(&page, &enter);
            QCOMPARE(enter.isAccepted(), accepted);
            QCOMPARE(zone->property("dragOver").toBool(), accepted);
            QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
            QCoreApplication::sendEvent(&page, &drop);
            QVERIFY(!zone->property("dragOver").toBool());
            QCOMPARE(added.size(), accepted ? 1 : 0);
            if (accepted)
                QCOMPARE(added.at(0).at(0).toStringList(), QStringList{path("a.MP4")});
        }
    }

    void emptyPageOpensDialog()
    {
        FileAddGPage page;
        page.resize(600, 400);
        page.show();
        QSignalSpy added(&page, &FileAddGPage::filesAddActived);
        press(&page, "btnAddMediaFiles", {path("a.MP4")});
        press(&page, "btnAddMediaFiles");
        QCOMPARE(added.size(), 1);
        // The zone around the button.
        FileChooser::setNextAnswer({path("b.mp3")});
        QTest::mouseClick(page.windowHandle(), Qt::LeftButton, {}, {40, 40});
        QCOMPARE(added.size(), 2);
        QCOMPARE(added.at(1).at(0).toStringList(), QStringList{path("b.mp3")});
    }

    void toolBar()
    {
        ComToolBarGPage bar;
        bar.setAllowedPatterns(suffixPatterns(7));
        QSignalSpy added(&bar, &ComToolBarGPage::filesAddActived);
        press(&bar, "btnAddFile", {path("c.txt")});
        press(&bar, "btnAddDir", {m_dir.path()});
        press(&bar, "btnAddDir", {path("empty")});
        press(&bar, "btnAddFile");
        press(&bar, "btnAddDir");
        QCOMPARE(added.size(), 3);
        QCOMPARE(added.at(0).at(1).value<FileAddType>(), FileAddType::AddFile);
        QCOMPARE(added.at(1).at(0).toStringList(), QStringList({path("a.MP4"), path("b.mp3")}));
        QCOMPARE(added.at(1).at(1).value<FileAddType>(), FileAddType::AddFolder);
        QVERIFY(added.at(2).at(0).toStringList().isEmpty());
        QSignalSpy cleared(&bar, &ComToolBarGPage::itemclearActived);
        press(&bar, "btnClear");
        QCOMPARE(cleared.size(), 1);
    }

    // A name that isn't in UTF-8 leads to no file, which the page tells instead of passing it over.
    void undecodableNamesAreHandedOn()
    {
        writeTestFile(path("old/fine.mp4"));
        const QByteArray folder = QFile::encodeName(path("old"));
        for (const char *name : {"/\xe9t\xe9.mp4", "/\xe9t\xe9.txt"})
            std::fclose(std::fopen((folder + name).constData(), "w"));
        const auto removeThem = qScopeGuard([&] {
            for (const char *name : {"/\xe9t\xe9.mp4", "/\xe9t\xe9.txt"})
                std::remove((folder + name).constData());
        });
        const QStringList files = mediaFilesIn(path("old"), suffixPatterns(7));
        QCOMPARE(files.size(), 2);
        QCOMPARE(files.first(), path("old/fine.mp4"));
        QVERIFY(isUndecodable(files.last()) && files.last().endsWith("t\uFFFD.mp4"_s));
        QMimeData data;
        data.setUrls({QUrl::fromEncoded("file://" + folder + "/%E9t%E9.mp4")});
        FileAddGPage page;
        page.setAllowedSuffixes(videoFormats());
        QSignalSpy added(&page, &FileAddGPage::filesAddActived);
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&page, &enter);
        QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&page, &drop);
        QCOMPARE(added.size(), 1);
        QVERIFY(isUndecodable(added.at(0).at(0).toStringList().value(0)));
    }

    void shortcutOfThePageOnShow()
    {
        QStackedWidget pages;
        pages.addWidget(new ComToolBarGPage);
        auto *const second = new ComToolBarGPage;
        pages.addWidget(second);
        pages.setCurrentWidget(second);
        pages.show();
        pages.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&pages));
        QSignalSpy added(second, &ComToolBarGPage::filesAddActived);
        FileChooser::setNextAnswer({path("a.MP4")});
        QTest::keyClick(&pages, Qt::Key_O, Qt::ControlModifier);
        QTRY_COMPARE(added.size(), 1);
    }

    void importsInOrder()
    {
        QWidget window;
        QStringList imported;
        const QStringList files{path("b.mp3"), path("a.MP4"), path("c.txt")};
        importFiles(&window, files, [&](const QString &file) {
            imported += file;
            const auto *dialog = window.findChild<MediaImportDialog *>();
            QCOMPARE(QApplication::activeModalWidget(), dialog);
            QCOMPARE(dialog->findChild<QProgressBar *>()->value(), imported.size());
            // A handful of files must not flash a dialog.
            QVERIFY(dialog->testAttribute(Qt::WA_DontShowOnScreen));
        });
        QCOMPARE(imported, files);
        QVERIFY(!window.findChild<MediaImportDialog *>());
    }

    void importCancels()
    {
        const QStringList many = QVector<QString>(100000, path("a.MP4")).toList();
        for (const char *button : {"btnCancel", "btnClose", ""}) {
            QWidget window;
            window.show();
            bool cancelled = false;
            int afterCancel = 0;
            importFiles(&window, many, [&](const QString &) {
                afterCancel += cancelled ? 1 : 0;
                auto *dialog = window.findChild<MediaImportDialog *>();
                if (cancelled || !dialog->windowHandle() || !dialog->windowHandle()->isExposed())
                    return;
                cancelled = true;
                if (*button)
                    press(dialog, button);
                else
                    QTest::keyClick(dialog, Qt::Key_Escape);
            });
            QVERIFY(cancelled);
            QCOMPARE(afterCancel, 0);
        }
    }

    void importOutlivesItsParent()
    {
        QPointer<QWidget> window = new QWidget;
        int imported = 0;
        importFiles(window, {path("a.MP4"), path("b.mp3")}, [&](const QString &) {
            ++imported;
            delete window;
        });
        QCOMPARE(imported, 1);
        QVERIFY(!window);
    }

    void thumbnailsWaitForTheImport()
    {
        QWidget window;
        int answers = 0;
        importFiles(&window, {path("a.MP4")}, [&](const QString &file) {
            requestThumbnail(file, &window, [&](const QPixmap &) { ++answers; });
            // Without a break, two are answered meanwhile.
            MediaTasksManager other;
            VideoImagePickTask tasks[2];
            for (VideoImagePickTask &task : tasks) {
                task.setParam(new VideoImagePickTaskParam(file, path("shot.png")));
                other.addTask(&task);
            }
            other.startTimer();
            QTRY_VERIFY_WITH_TIMEOUT(MediaTask::isFinal(tasks[1].state()), 30000);
            QCOMPARE(answers, 0);
        });
        QTRY_COMPARE_WITH_TIMEOUT(answers, 1, 30000);
    }

private:
    static void press(const QWidget *window, const char *button, const QStringList &answer = {})
    {
        FileChooser::setNextAnswer(answer);
        QTest::mouseClick(window->findChild<QPushButton *>(QLatin1String(button)), Qt::LeftButton);
    }
    QString path(const char *name) const { return m_dir.filePath(QString::fromUtf8(name)); }

    QTemporaryDir m_dir;
};

QTEST_MAIN(TestIntake)
#include "tst_intake.moc"
