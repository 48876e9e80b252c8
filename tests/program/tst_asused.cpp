// SPDX-License-Identifier: MIT
#include "MediaKits/Player/csvideoplayer.h"
#include "MediaKits/Player/MPVPlayer/mpvplayer.h"
#include "player/mpvpeer.h"
#include "program/programinuse.h"
#include "support/toolrun.h"

#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QStackedWidget>
#include <QTimeEdit>
#include <QtTest>

#include <csignal>

namespace {

constexpr QSize pictureSize(640, 480);

// None of these numbers means more than one process.
void sendSignal(qint64 process, int signal)
{
    QVERIFY(process > 1);
    ::kill(pid_t(process), signal);
}

} // namespace

// Players inside their windows, and windows above each other.
class TestAsUsed : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_program.open(); }
    void cleanupTestCase() { m_program.leave(); }
    void cleanup() { m_program.tidy(); }

    void cropFrameLiesAboveTheFilm()
    {
        const QWidget *row = addFilm("btnConverter");
        QVERIFY(row);
        inEditor(*row, "VideoCutDialog", [this](QWidget &dialog) {
            ProgramInUse::awaitColour(dialog, ScreenFilm::firstColour);
            Desktop::key("space");
            const CropFrame frame(dialog);
            auto *width = child<QSpinBox>(dialog, "sbW");
            auto *height = child<QSpinBox>(dialog, "sbH");
            QCOMPARE(QSize(width->value(), height->value()), pictureSize);
            Desktop::drag(frame.rect().bottomRight() - QPoint(1, 1), frame.rect().center());
            QTRY_VERIFY(qAbs(width->value() - pictureSize.width() / 2) < 8);
            QVERIFY(qAbs(height->value() - pictureSize.height() / 2) < 8);
            QTRY_VERIFY(frame.isSeen(ScreenFilm::firstColour));

            const QPoint before = dialog.pos();
            const QPoint title = onScreen(*child(dialog, "lblTitle")).center();
            Desktop::drag(title, title + QPoint(-90, 50));
            QTRY_VERIFY(dialog.pos() != before);
            QTRY_VERIFY(frame.isSeen(ScreenFilm::firstColour));
            const QRect corner = onScreen(dialog);
            Desktop::drag(corner.bottomRight() - QPoint(1, 1),
                          corner.bottomRight() + QPoint(80, 60));
            QTRY_VERIFY(dialog.size() != corner.size());
            QTRY_VERIFY(frame.isSeen(ScreenFilm::firstColour));
            {
                const Cover cover(onScreen(dialog));
                QTRY_VERIFY(Desktop::isLike(Desktop::seenAt(frame.onItsEdge()), Cover::colour()));
                Desktop::order("windowactivate", dialog);
                QTRY_VERIFY(frame.isSeen(ScreenFilm::firstColour));
            }
            Desktop::order("windowminimize", m_program.window());
            QTRY_VERIFY(frame.isUnseen());
            Desktop::order("windowactivate", m_program.window());
            QTRY_VERIFY(frame.isSeen(ScreenFilm::firstColour));
            Desktop::drag(frame.inside(), frame.inside() + QPoint(40, 0));
            QTRY_VERIFY(child<QSpinBox>(dialog, "sbX")->value() > 0);
            QTRY_VERIFY(frame.isSeen(ScreenFilm::firstColour));
        });
    }

    void playerComesBack()
    {
        const QWidget *row = addFilm("btnConverter");
        QVERIFY(row);
        inEditor(*row, "VideoCutDialog", [](QWidget &dialog) {
            ProgramInUse::awaitColour(dialog, ScreenFilm::firstColour);
            auto &player = *dialog.findChild<CSVideoPlayer *>();
            const auto *process = player.findChild<MPVPlayer *>();
            const auto end = [process] { sendSignal(process->processId(), SIGKILL); };
            Desktop::key("space");
            QTRY_VERIFY(!child<QPushButton>(dialog, "btnPlay")->isChecked());
            constexpr int placeMs = (ScreenFilm::halfSeconds + 2) * 1000;
            player.seek(placeMs);
            ProgramInUse::awaitColour(dialog, ScreenFilm::secondColour);
            const qint64 first = process->processId();
            QSignalSpy ends(&player, &CSVideoPlayer::finished);
            end();
            QTRY_VERIFY(process->processId() != first);
            QSignalSpy progress(&player, &CSVideoPlayer::progressChanged);
            QTRY_VERIFY_WITH_TIMEOUT(!progress.isEmpty(), ProgramInUse::limitMs);
            ProgramInUse::awaitColour(dialog, ScreenFilm::secondColour);
            QCOMPARE(progress.last()[0].value<long>(), long(placeMs));
            QCOMPARE(ends.count(), 0);
            // A second loss has a cause that another start doesn't mend.
            end();
            QVERIFY(ends.wait(ProgramInUse::limitMs));
            QVERIFY(!player.isRunning());
        });
    }

    // The picture of a sound lies under no mask: X gives the keys to the player's window there, if
    // it wants them.
    void typingUnderThePointer()
    {
        const QWidget *row = addFilm("btnAudioConverter");
        QVERIFY(row);
        inEditor(*row, "AudioCutDialog", [](QWidget &dialog) {
            auto &player = *dialog.findChild<CSVideoPlayer *>();
            QSignalSpy progress(&player, &CSVideoPlayer::progressChanged);
            QTRY_VERIFY_WITH_TIMEOUT(!progress.isEmpty(), ProgramInUse::limitMs);
            const qint64 process = player.findChild<MPVPlayer *>()->processId();
            const QRect picture = onScreen(*child(dialog, "lblVideoShow"));
            Desktop::pointTo(picture.center());
            auto *play = child<QPushButton>(dialog, "btnPlay");
            QVERIFY(play->isChecked());
            Desktop::key("space");
            QTRY_VERIFY(!play->isChecked());

            auto *start = child<QTimeEdit>(dialog, "tedtStart");
            start->setFocus();
            start->setSelectedSection(QDateTimeEdit::SecondSection);
            Desktop::type("03"_s);
            Desktop::key("Tab");
            QTRY_COMPARE(start->time(), QTime(0, 0, 3));
            // A question about the changed time, which a second Escape takes back.
            bool isAsked = false;
            whenModal("MediaMessageBox", [&isAsked](QWidget &) {
                isAsked = true;
                Desktop::key("Escape");
            });
            Desktop::key("Escape");
            QTRY_VERIFY(isAsked);
            QTRY_COMPARE(QApplication::activeModalWidget(), &dialog);
            QTRY_VERIFY(dialog.isActiveWindow() && Desktop::hasKeyboard(dialog));
            Desktop::key("q");
            Desktop::click(picture.center());
            Desktop::key("space");
            QTRY_VERIFY(play->isChecked());
            QCOMPARE(player.findChild<MPVPlayer *>()->processId(), process);
            QVERIFY(player.isRunning());
        });
    }

    void previewPlaysEachTime()
    {
        for (int time = 0; time < 2; ++time) {
            const QWidget *row = addFilm("btnConverter");
            QVERIFY(row);
            Desktop::click(*child(*row, "btnConvert"));
            QTRY_VERIFY_WITH_TIMEOUT(preview(), ProgramInUse::limitMs);
            ProgramInUse::awaitFilm(*preview());
            ProgramInUse::clickToastAway();

            // For a second the pointer moves where the player's own control bar would come.
            const QRect picture = onScreen(*child(*preview(), "lblVideoShow"));
            const QPoint low(picture.center().x(), picture.bottom() - 30);
            auto *position = child<QLabel>(*preview(), "lblPos");
            const QString before = position->text();
            const auto isBare = [&] {
                const QImage seen = Desktop::seen(picture);
                const QPoint middle = seen.rect().center();
                const QColor film = seen.pixelColor(middle);
                // Without the black at its sides.
                const int half = seen.height() / 2;
                for (int x = middle.x() - half; x < middle.x() + half; x += 8) {
                    if (!Desktop::isLike(seen.pixelColor(x, low.y() - picture.top()), film))
                        return false;
                }
                return true;
            };
            int moves = 0;
            do {
                Desktop::pointTo(low + QPoint(++moves % 40, 0));
                QTest::qWait(1); // a pointer that is moved by hand
                QVERIFY(isBare());
            } while (position->text() == before && moves < 1000);
            Desktop::key("space");
            QTRY_VERIFY(!child<QPushButton>(*preview(), "btnPlay")->isChecked());
            Desktop::click(*child(*preview(), "btnClose"));
            QTRY_VERIFY(!preview());
        }
    }

    void previewWaitsForTheEditor()
    {
        const QWidget *converted = addFilm("btnConverter");
        const QWidget *row = addFilm("btnConverter");
        QVERIFY(converted && row);
        Desktop::click(*child(*converted, "btnConvert"));
        QList<qint64> converters;
        QTRY_VERIFY(!(converters = processesWith(m_program.film())).isEmpty());
        for (const qint64 process : converters)
            sendSignal(process, SIGSTOP);
        int asked = 0; // for leaving would end it, which the key means without a tray
        whenModal("MediaMessageBox", [&asked](QWidget &box) { press(box, "btnCancel"), ++asked; });
        Desktop::key("ctrl+q");
        QTRY_COMPARE(asked, 1);
        inEditor(*row, "VideoCutDialog", [&](QWidget &dialog) {
            ProgramInUse::awaitFilm(dialog);
            for (const qint64 process : converters)
                sendSignal(process, SIGCONT);
            const auto *pages = child<QStackedWidget>(*converted, "swdtState");
            QTRY_COMPARE_WITH_TIMEOUT(pages->currentIndex(), 2, ProgramInUse::limitMs);
            QVERIFY(!preview());
        });
        QTRY_VERIFY(preview());
        ProgramInUse::awaitFilm(*preview());
        ProgramInUse::clickToastAway();
        // Out of the row's way.
        const QPoint title = onScreen(*child(*preview(), "lblTitle")).center();
        Desktop::drag(title, title + QPoint(0, 400));

        inEditor(*row, "VideoCutDialog", [&](QWidget &dialog) {
            ProgramInUse::awaitFilm(dialog);
            QVERIFY(!child<QPushButton>(*preview(), "btnPlay")->isChecked());
            MpvPeer peer(preview()->findChild<MPVPlayer *>()->ipcServerName());
            QCOMPARE(peer.property("pause"), QJsonValue(true));
        });
        // The main window has come above it.
        Desktop::order("windowactivate", *preview());
        Desktop::click(*child(*preview(), "btnClose"));
        QTRY_VERIFY(!preview());
    }

    // What is typed while a film is finished stays text.
    void previewLeavesTheKeyboard()
    {
        const QWidget *row = addFilm("btnConverter");
        QVERIFY(row);
        auto *field = child<QLineEdit>(m_program.currentPage(), "ledtCustomPath");
        const QString folder = field->text();
        Desktop::click(*child(*row, "btnConvert"));
        Desktop::click(*field);
        QTRY_VERIFY(field->hasFocus());
        QTRY_VERIFY_WITH_TIMEOUT((Desktop::type("a"_s), preview()), 4 * ProgramInUse::limitMs);
        ProgramInUse::awaitFilm(*preview());
        Desktop::type("bcd"_s);
        QTRY_VERIFY2(field->text().contains("abcd"_s), qPrintable(field->text()));
        field->setText(folder);
    }

    void questionComesBeforeThePreview()
    {
        QVERIFY(addFilm("btnMerger") && addFilm("btnMerger"));
        Desktop::click(*child(m_program.window(), "btnMerge"));
        QWidget *question = nullptr;
        QTRY_VERIFY_WITH_TIMEOUT((question = visibleWindow("MediaMergeFinishTipsDialog")),
                                 4 * ProgramInUse::limitMs);
        QTRY_VERIFY(question->isActiveWindow());
        // What is seen there is the question.
        const QPoint title = child(*question, "lblTitle")->geometry().center();
        QTRY_VERIFY(Desktop::isLike(Desktop::seenAt(question->mapToGlobal(title)), Qt::white));
        QVERIFY(!preview());
        Desktop::key("Escape");
        QTRY_VERIFY(!visibleWindow("MediaMergeFinishTipsDialog"));
        QTRY_VERIFY(preview());
        ProgramInUse::awaitFilm(*preview());
        ProgramInUse::clickToastAway();
        Desktop::click(*child(*preview(), "btnClose"));
        QTRY_VERIFY(!preview());
    }

    void secondStartBringsTheWindowToTheFront()
    {
        const SystemTray tray;
        m_program.window().close();
        QVERIFY(!m_program.window().isVisible());
        QProcess second;
        second.start(builtProgram("morvane"_s), QStringList());
        QTRY_COMPARE_WITH_TIMEOUT(second.state(), QProcess::NotRunning, 4 * ProgramInUse::limitMs);
        QCOMPARE(second.exitCode(), 0);
        QTRY_VERIFY(m_program.window().isVisible() && m_program.window().isActiveWindow());
        // Its keyboard lives.
        bool isAnswered = false;
        whenModal("ExitTipsDialog", [&isAnswered](QWidget &dialog) {
            isAnswered = true;
            press(dialog, "btnClose");
        });
        QTRY_VERIFY(Desktop::hasKeyboard(m_program.window()));
        Desktop::key("ctrl+q");
        QTRY_VERIFY(isAnswered);
    }

private:
    QWidget *addFilm(const char *pageButton) { return m_program.addFilm(pageButton); }
    static QWidget *preview() { return ProgramInUse::preview(); }
    template<class Act>
    static void inEditor(const QWidget &row, const char *dialog, Act act)
    {
        ProgramInUse::inDialog(*child(row, "btnCut"), dialog, act);
    }

    ProgramInUse m_program;
};

int main(int argc, char *argv[])
{
    TestAsUsed test;
    return runInProgram(argc, argv, test);
}

#include "tst_asused.moc"
