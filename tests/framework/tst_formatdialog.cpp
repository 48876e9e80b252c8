// SPDX-License-Identifier: MIT
#include "catalogue/encparamcatalog.h"
#include "MediaKits/AppInstance/LocalStore/encparamhistory.h"
#include "MediaKits/FunctionPage/Framework/Formats/formatitemroles.h"
#include "MediaKits/FunctionPage/Framework/Formats/mediaformatdialog.h"
#include "support/utf8.h"

#include <QButtonGroup>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>
#include <QtTest>

#include <functional>

using Ids = QList<quint32>;

namespace {

constexpr quint32 mp3Id = EncParamCatalog::defaultAudioId;
constexpr quint32 gifId = EncParamCatalog::defaultGifId;
constexpr quint32 hdId = EncParamCatalog::defaultHdId;

Ids idsOf(const QListWidget *list)
{
    Ids ids;
    for (int row = 0; row < list->count(); ++row)
        ids.append(list->item(row)->data(FormatIdRole).toUInt());
    return ids;
}

quint32 currentOf(const QListWidget *list)
{
    return list->currentItem() ? list->currentItem()->data(FormatIdRole).toUInt() : 0;
}

void setRecent(const Ids &ids)
{
    EncParamHistory &history = EncParamHistory::instance();
    for (const quint32 id : Ids(history.ids()))
        history.remove(id);
    for (auto id = ids.crbegin(); id != ids.crend(); ++id)
        history.touch(*id);
}

} // namespace

class TestFormatDialog : public QObject
{
    Q_OBJECT

private slots:
    void init() { setRecent({}); }
    void cleanup() { delete m_dialog; }
    void opensOnItsPreset()
    {
        const struct
        {
            quint32 id;
            QString tab;
            quint32 category;
            quint32 preset;
        } cases[] = {{2400004, "视频"_s, 1021, 2400004},
                     {mp3Id, "音频"_s, 2001, mp3Id},
                     {4711, "视频"_s, 1001, 1003001},
                     {gifId, {}, 0, gifId},
                     {1950001, {}, 0, 1950001}};
        for (const auto &each : cases) {
            open(each.id);
            QCOMPARE(checkedTab(), each.tab);
            QCOMPARE(currentOf(list("lWdtCategory")), each.category);
            const QListWidget *presets = list("lwdtParamInfos");
            QCOMPARE(currentOf(presets), each.preset);
            const QRect row = presets->visualItemRect(presets->currentItem());
            QVERIFY(presets->viewport()->rect().contains(row));
            // From an unlisted category, too, a way leads to the listed ones.
            press("btnAudio");
            press("btnVideo");
            QVERIFY(Ids({1001, 1021}).contains(currentOf(list("lWdtCategory"))));
            delete m_dialog;
        }
    }

    void hidesKeepSource()
    {
        setRecent({1003001, hdId, mp3Id});
        open(hdId, true);
        QCOMPARE(idsOf(list("lwdtParamInfos")),
                 Ids({1003002, 1003003, 1003004, 1003005, 1031001, 1031002}));
        QTRY_COMPARE(idsOf(list("lwdtHistory")), Ids({hdId}));
    }

    void tabs()
    {
        open(2400004);
        press("btnAudio");
        QCOMPARE(currentOf(list("lWdtCategory")), 2001u);
        QCOMPARE(list("lWdtCategory")->count(), 10);
        QCOMPARE(currentOf(list("lwdtParamInfos")), 0u);
        click("lWdtCategory", 3);
        QCOMPARE(list("lwdtParamInfos")->count(), 6);
        press("btnHistory");
        auto *const pages = m_dialog->findChild<QStackedWidget *>();
        QCOMPARE(pages->currentIndex(), 1);
        press("btnVideo");
        QCOMPARE(pages->currentIndex(), 0);
        QCOMPARE(currentOf(list("lWdtCategory")), 1021u);
        QCOMPARE(currentOf(list("lwdtParamInfos")), 2400004u);
    }

    void audioOnly()
    {
        setRecent({hdId, mp3Id});
        m_dialog = new MediaFormatDialog(hdId, false);
        m_dialog->setFormatTypes(1, true);
        m_dialog->show();
        QCOMPARE(checkedTab(), "音频"_s);
        for (const auto *tab : m_dialog->findChild<QButtonGroup *>()->buttons())
            QCOMPARE(tab->isVisible(), tab->text() != "视频"_s);
        QCOMPARE(currentOf(list("lWdtCategory")), 2001u);
        QTRY_COMPARE(idsOf(list("lwdtHistory")), Ids({mp3Id}));
    }

    void details()
    {
        const auto subs = [this](const char *listName) {
            QStringList texts;
            for (int row = 0; row < list(listName)->count(); ++row) {
                const QWidget *widget = list(listName)->itemWidget(list(listName)->item(row));
                texts += widget->findChild<QLabel *>("lblSub"_s)->text();
            }
            return texts;
        };
        setRecent({1009001, 1003001, mp3Id, hdId});
        open(1009001);
        QCOMPARE(subs("lwdtParamInfos").value(0), "原视频分辨率"_s);
        QTRY_COMPARE(subs("lwdtHistory"),
                     QStringList({"0*0"_s, "原视频分辨率"_s, "自动"_s, "1920*1080"_s}));
        delete m_dialog;
        open(mp3Id);
        QCOMPARE(subs("lwdtParamInfos").value(1), "256 Kbps"_s);
    }

    void picks()
    {
        const std::function<void()> ways[] = {
            [this] { click("lwdtParamInfos", 1); },
            [this] {
                QTest::keyClick(m_dialog->focusWidget(), Qt::Key_Down);
                QTest::keyClick(m_dialog->focusWidget(), Qt::Key_Return);
            },
            [this] {
                press("btnHistory");
                click("lwdtHistory", 1);
            },
        };
        for (const auto &pick : ways) {
            setRecent({2400004, hdId, mp3Id});
            open(1003001);
            QTRY_COMPARE(list("lwdtHistory")->count(), 3);
            QSignalSpy picked(m_dialog, &MediaFormatDialog::encParamInfoIDPicked);
            pick();
            QCOMPARE(picked.size(), 1);
            QCOMPARE(picked.at(0).at(0).toUInt(), hdId);
            QCOMPARE(EncParamHistory::instance().ids(), Ids({hdId, 2400004, mp3Id}));
            QTRY_VERIFY(!m_dialog);
        }
    }

    void recentList()
    {
        setRecent({hdId, 4711, gifId});
        open(hdId);
        QTRY_COMPARE(idsOf(list("lwdtHistory")), Ids({hdId, gifId}));
        press("btnHistory");
        QListWidget *const recent = list("lwdtHistory");
        QSignalSpy picked(m_dialog, &MediaFormatDialog::encParamInfoIDPicked);
        const QWidget *row = recent->itemWidget(recent->item(0));
        QTest::mouseClick(row->findChild<QPushButton *>("btnDel"_s), Qt::LeftButton);
        QCOMPARE(idsOf(recent), Ids({gifId}));
        QVERIFY(!EncParamHistory::instance().ids().contains(hdId));
        QTest::keyClick(m_dialog->focusWidget(), Qt::Key_Escape);
        QTRY_VERIFY(!m_dialog);
        QVERIFY(picked.isEmpty());
    }

private:
    void open(quint32 id, bool hideKeepSource = false)
    {
        m_dialog = new MediaFormatDialog(id, hideKeepSource);
        m_dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_dialog));
    }

    QListWidget *list(const char *name) const
    {
        return m_dialog->findChild<QListWidget *>(QLatin1String(name));
    }
    void click(const char *listName, int row) const
    {
        QListWidget *const shown = list(listName);
        QTest::mouseClick(shown->viewport(), Qt::LeftButton, {},
                          shown->visualItemRect(shown->item(row)).center());
    }

    void press(const char *tab) const
    {
        QTest::mouseClick(m_dialog->findChild<QPushButton *>(QLatin1String(tab)), Qt::LeftButton);
    }
    QString checkedTab() const
    {
        const auto *tab = m_dialog->findChild<QButtonGroup *>()->checkedButton();
        return tab ? tab->text() : QString();
    }

    QPointer<MediaFormatDialog> m_dialog;
};

QTEST_MAIN(TestFormatDialog)
#include "tst_formatdialog.moc"
