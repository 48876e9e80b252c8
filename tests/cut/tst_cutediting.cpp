// SPDX-License-Identifier: MIT
#include "controls/elidedlabel.h"
#include "controls/interceptslider.h"
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "MediaKits/FunctionPage/VideoConvert/mediaconvertfunctionpage.h"
#include "resources/look.h"
#include "support/pagetest.h"
#include "support/testmedia.h"

#include <QDialog>
#include <QSpinBox>
#include <QTimeEdit>
#include <QtTest>

namespace {

constexpr quint32 mp4AsSource = 1003001;
constexpr int filmMs = 90000;
constexpr QSize pictureSize(320, 240);

int msOf(const QWidget &dialog, const char *field)
{
    return QTime(0, 0).msecsTo(child<QTimeEdit>(dialog, field)->time());
}

void setTimeOf(const QWidget &dialog, const char *field, int ms)
{
    child<QTimeEdit>(dialog, field)->setTime(QTime(0, 0).addMSecs(ms));
}

QRect boxOf(const QWidget &dialog)
{
    const auto number = [&](const char *name) { return child<QSpinBox>(dialog, name)->value(); };
    return {number("sbX"), number("sbY"), number("sbW"), number("sbH")};
}

// Replaces all that stands in a field, key by key.
void typeInto(const QWidget &dialog, const char *field, const QString &text)
{
    child(dialog, field)->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), text);
}

QString hint(const QWidget &dialog)
{
    const auto *label = child<ElidedLabel>(dialog, "lblHint");
    return label && label->isVisible() ? label->fullText() : QString();
}

// The convert page with one film, whose row opens the editor.
struct EditorTest : PageTest<MediaConvertFunctionPage>
{
    explicit EditorTest(const QString &film) : PageTest(FunctionSection::converter, mp4AsSource)
    {
        add({film});
        ready = QTest::qWaitFor([this] {
            return list()->count() == 1 && child(*row(0), "btnCut") &&
                   child(*row(0), "btnCut")->isEnabled();
        });
    }
    /// Opens the editor by the row's button, modally, for `act`, which has to end it.
    template<class Act>
    void edit(Act act)
    {
        bool opened = false;
        whenModal("VideoCutDialog", [&](QWidget &dialog) {
            opened = QTest::qWaitFor([&] { return dialog.isActiveWindow(); });
            act(dialog);
            // After a check that failed, too.
            if (dialog.isVisible())
                qobject_cast<QDialog *>(&dialog)->done(QDialog::Rejected);
        });
        press(*row(0), "btnCut");
        QVERIFY(opened);
    }
    ConvertTaskParam &param() const
    {
        return *static_cast<ConvertTaskParam *>(row(0)->task()->param());
    }

    bool ready = false;
};

} // namespace

// What is typed, caught and dragged in the editor as its user opens it.
class TestCutEditing : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void typedTime_data();
    void typedTime();
    void typedTimeCountsAtTheButton();
    void typedNumber_data();
    void typedNumber();
    void caughtPointsLeaveALength();
    void reopenedSpanBeginsAtItsStart();

private:
    QTemporaryDir m_media;
    QString m_film = m_media.filePath(QStringLiteral("film.mp4"));
};

void TestCutEditing::initTestCase()
{
    Look::apply();
    AppIni::instance().setValue(AppIni::Key::PreviewShowWhenAdded, false);
    ClipPlan plan;
    plan.seconds = filmMs / 1000.0;
    plan.frameRate = 5;
    plan.channels = 0;
    makeClip(m_film, plan);
}

void TestCutEditing::typedTime_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("end");
    QTest::addColumn<bool>("hinted");
    const auto row = [](const char *name, const char *field, const char *typed, int start, int end,
                        bool hinted) {
        QTest::newRow(name) << QByteArray(field) << QString(QLatin1String(typed)) << start * 1000
                            << end * 1000 << hinted;
    };
    // From 10 to 60 of 90 seconds.
    row("end, its minutes first", "tedtEnd", "00:00:20.000", 10, 20, false);
    row("start, beyond the end for a while", "tedtStart", "00:00:40.000", 40, 60, false);
    row("without separators", "tedtEnd", "000115000", 10, 75, false);
    row("start behind the end", "tedtStart", "00:01:10.000", 70, 90, true);
    row("end before the start", "tedtEnd", "00:00:05.000", 0, 5, true);
    row("end behind the film", "tedtEnd", "00:02:00.000", 10, 90, true);
    row("start behind the film", "tedtStart", "00:02:00.000", 10, 60, true);
}

void TestCutEditing::typedTime()
{
    QFETCH(QByteArray, field);
    QFETCH(QString, typed);
    EditorTest test(m_film);
    QVERIFY(test.ready);
    test.edit([&](QWidget &dialog) {
        setTimeOf(dialog, "tedtStart", 10000);
        setTimeOf(dialog, "tedtEnd", 60000);
        typeInto(dialog, field.constData(), typed);
        // Nothing is decided before the typing ends: all digits stand as they were typed.
        QString shown = child<QTimeEdit>(dialog, field.constData())->text();
        QCOMPARE(shown.remove(QRegularExpression(QStringLiteral("[:.]"))),
                 typed.remove(QRegularExpression(QStringLiteral("[:.]"))));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTEST(msOf(dialog, "tedtStart"), "start");
        QTEST(msOf(dialog, "tedtEnd"), "end");
        const auto *bar = dialog.findChild<InterceptSlider *>();
        QCOMPARE(bar->leftValue(), msOf(dialog, "tedtStart"));
        QCOMPARE(bar->rightValue(), msOf(dialog, "tedtEnd"));
        QFETCH(bool, hinted);
        QCOMPARE(!hint(dialog).isEmpty(), hinted);
        press(dialog, "btnSave");
    });
    QVERIFY(test.param().timeRange);
    QTEST(test.param().timeRange->start, "start");
    QTEST(test.param().timeRange->end, "end");
}

void TestCutEditing::typedTimeCountsAtTheButton()
{
    EditorTest test(m_film);
    test.edit([](QWidget &dialog) {
        typeInto(dialog, "tedtEnd", QStringLiteral("00:00:50.000"));
        typeInto(dialog, "tedtStart", QStringLiteral("00:01:10.000"));
        // What comes out of it is shown before it is taken.
        press(dialog, "btnSave");
        QVERIFY(dialog.isVisible());
        QVERIFY(!hint(dialog).isEmpty());
        QCOMPARE(msOf(dialog, "tedtEnd"), filmMs);
        shoot(dialog, "cut_hint");
        typeInto(dialog, "tedtStart", QStringLiteral("00:00:30.000"));
        press(dialog, "btnSave");
        QVERIFY(!dialog.isVisible());
    });
    QVERIFY(test.param().timeRange);
    QCOMPARE(test.param().timeRange->start, 30000);
    QCOMPARE(test.param().timeRange->end, filmMs);
}

void TestCutEditing::typedNumber_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QRect>("box");
    QTest::addColumn<bool>("hinted");
    // From a box of 100x90 at 57, 31 in 320x240.
    QTest::newRow("fits") << QByteArray("sbW") << QStringLiteral("120") << QRect(57, 31, 120, 90)
                          << false;
    QTest::newRow("width pushes x")
        << QByteArray("sbW") << QStringLiteral("300") << QRect(20, 31, 300, 90) << true;
    QTest::newRow("x pushes width")
        << QByteArray("sbX") << QStringLiteral("300") << QRect(300, 31, 20, 90) << true;
    QTest::newRow("wider than the picture")
        << QByteArray("sbW") << QStringLiteral("3000") << QRect(0, 31, 320, 90) << true;
    QTest::newRow("y below the picture")
        << QByteArray("sbY") << QStringLiteral("500") << QRect(57, 239, 100, 1) << true;
}

void TestCutEditing::typedNumber()
{
    QFETCH(QByteArray, field);
    QFETCH(QString, typed);
    EditorTest test(m_film);
    test.edit([&](QWidget &dialog) {
        for (const auto &[name, value] :
             {std::pair{"sbX", 57}, {"sbY", 31}, {"sbW", 100}, {"sbH", 90}})
            child<QSpinBox>(dialog, name)->setValue(value);
        typeInto(dialog, field.constData(), typed);
        QCOMPARE(child<QSpinBox>(dialog, field.constData())->text(), typed);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTEST(boxOf(dialog), "box");
        QFETCH(bool, hinted);
        QCOMPARE(!hint(dialog).isEmpty(), hinted);
        // A number that was typed on the way is none that counts.
        typeInto(dialog, "sbX", QStringLiteral("300"));
        for (int i = 0; i < 3; ++i)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backspace);
        QTest::keyClicks(QApplication::focusWidget(), QString::number(0));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QFETCH(QRect, box);
        QCOMPARE(boxOf(dialog).width(), box.width());
        press(dialog, "btnSave");
    });
    QVERIFY(test.param().cropRect);
    QVERIFY(QRect(QPoint(0, 0), pictureSize)
                .contains(QRect(test.param().cropRect->x, test.param().cropRect->y,
                                test.param().cropRect->width, test.param().cropRect->height)));
}

void TestCutEditing::caughtPointsLeaveALength()
{
    EditorTest test(m_film);
    test.edit([](QWidget &dialog) {
        const auto key = [](Qt::Key code) { QTest::keyClick(QApplication::focusWidget(), code); };
        auto *bar = dialog.findChild<InterceptSlider *>();
        const auto seek = [bar](int ms) {
            bar->setValue(ms);
            emit bar->sliderMoved(ms);
        };
        key(Qt::Key_Space);
        setTimeOf(dialog, "tedtEnd", 20000);
        seek(50000);
        key(Qt::Key_I);
        QCOMPARE(msOf(dialog, "tedtStart"), 50000);
        QCOMPARE(msOf(dialog, "tedtEnd"), filmMs);
        QVERIFY(!hint(dialog).isEmpty());
        seek(30000);
        key(Qt::Key_O);
        QCOMPARE(msOf(dialog, "tedtStart"), 0);
        QCOMPARE(msOf(dialog, "tedtEnd"), 30000);
        // Nothing begins where the film ends, and nothing ends where it begins.
        seek(filmMs);
        key(Qt::Key_I);
        QCOMPARE(msOf(dialog, "tedtStart"), 0);
        seek(0);
        key(Qt::Key_O);
        QCOMPARE(msOf(dialog, "tedtEnd"), 30000);
        QVERIFY(!hint(dialog).isEmpty());
        // Nor do handles that touch leave nothing between them.
        const QPoint right = child(dialog, "rightslider")->geometry().center();
        const QPoint left = child(dialog, "leftslider")->geometry().center();
        const int room = right.x() - left.x() - child(dialog, "leftslider")->width();
        QTest::mousePress(bar, Qt::LeftButton, Qt::NoModifier, right);
        const QPoint to = right - QPoint(room, 0);
        QMouseEvent move(QEvent::MouseMove, to, bar->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(bar, &move);
        QTest::mouseRelease(bar, Qt::LeftButton, Qt::NoModifier, to);
        QVERIFY(msOf(dialog, "tedtEnd") > msOf(dialog, "tedtStart"));
        QVERIFY(msOf(dialog, "tedtEnd") < 5000);
        press(dialog, "btnSave");
    });
    QVERIFY(test.param().timeRange);
    QVERIFY(test.param().timeRange->end > test.param().timeRange->start);
}

void TestCutEditing::reopenedSpanBeginsAtItsStart()
{
    EditorTest test(m_film);
    test.edit([](QWidget &dialog) {
        setTimeOf(dialog, "tedtEnd", 60000);
        press(dialog, "btnSave");
    });
    test.edit([](QWidget &dialog) {
        QCOMPARE(msOf(dialog, "tedtEnd"), 60000);
        QVERIFY(dialog.findChild<InterceptSlider *>()->value() < 30000);
        press(dialog, "btnCancel");
    });
}

QTEST_MAIN(TestCutEditing)
#include "tst_cutediting.moc"
