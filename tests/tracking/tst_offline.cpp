// SPDX-License-Identifier: MIT
#include "MediaKits/DataTracker/a360sem.h"
#include "MediaKits/DataTracker/oskdatatracker.h"
#include "MediaKits/DataTracker/oskevent.h"
#include "MediaKits/DataTracker/trackevent.h"
#include "MediaKits/DataTracker/volcdatatracker.h"
#include "support/testmedia.h"

#include <QtTest>

class TestOffline : public QObject
{
    Q_OBJECT

private slots:
    // That no socket is opened meanwhile shows when the program is traced.
    void emptyHosts()
    {
        const QString tasks = "/proc/self/task"_s;
        const int threads = entriesOf(tasks).size();
        OskDataTracker osk(OskTrackerConfig{});
        VolcDataTracker volc(VolcTrackerConfig{});
        A360Sem sem({QString(), "360"_s, "click"_s});
        volc.setUp({{"user_unique_id"_s, 1}});
        for (int i = 0; i < 31; ++i)
            trackEvent(MediaFunction::Convert, "video_convert_start"_s, {}, osk, volc);
        sem.report("REGISTERED"_s);
        QCOMPARE(volc.headerAsJson(), "{}"_s);
        QTest::qWait(20); // nothing may begin
        QCOMPARE(entriesOf(tasks).size(), threads);
        QCOMPARE(QCoreApplication::instance()->findChildren<QTimer *>().size(), 0);
        osk.trackCrash();
        volc.stop();
    }

    // The texts follow a pattern, so that a slip of the pen shows.
    void eventTable()
    {
        for (int id = 13; id <= 32; ++id) {
            const bool isShown = id % 2 == 1;
            const OskEvent &event = *findOskEvent(id);
            const QByteArray page(event.page);
            const QByteArray view = page + "_view_" + page.chopped(int(sizeof("_page")) - 1);
            QCOMPARE(QByteArray(event.code), isShown ? view : page + "_click_zhuanhuan");
            QCOMPARE(event.type, isShown ? "show" : "click");
            QCOMPARE(event.page, findOskEvent(isShown ? id + 1 : id - 1)->page);
            QVERIFY(QByteArray(event.name).endsWith(isShown ? "展示" : "点击转换"));
        }
    }
};

QTEST_GUILESS_MAIN(TestOffline)
#include "tst_offline.moc"
