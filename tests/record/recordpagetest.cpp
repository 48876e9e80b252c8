// SPDX-License-Identifier: MIT
#include "recordpagetest.h"

#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "MediaKits/AppInstance/LocalStore/functionsettings.h"
#include "resources/look.h"
#include "support/desktop.h"

#include <QScreen>

const QColor RecordPageTest::wallColour("#20A060");
const QColor RecordPageTest::pageColour("#C000C0");

void RecordPageTest::initTestCase()
{
    QApplication::setQuitOnLastWindowClosed(false);
    QVERIFY(Look::apply());
    AppIni::instance().setValue(AppIni::Key::PreviewShowWhenAdded, false);
}

void RecordPageTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    FunctionSettings::instance().setValue(FunctionSection::screenCap, FunctionKey::outPath,
                                          folder());
    m_wall = std::make_unique<QWidget>(nullptr, Qt::FramelessWindowHint);
    m_wall->setStyleSheet("background: "_s + wallColour.name());
    m_wall->setGeometry(0, 0, 1920, 1080);
    m_wall->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_wall.get()));
    m_page = std::make_unique<ScreencapFuncionPage>();
    m_page->setAttribute(Qt::WA_StyledBackground);
    m_page->setStyleSheet("ScreencapFuncionPage { background: %1 }"_s.arg(pageColour.name()));
    m_page->resize(900, 640);
    m_page->move(m_wall->screen()->availableGeometry().center() - m_page->rect().center());
    m_page->show();
    QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
    part("rbSDNone")->click();
    // What lay below the word on missing sound moves up.
    QCoreApplication::sendPostedEvents();
}

void RecordPageTest::cleanup()
{
    engine().stop();
    QTRY_COMPARE_WITH_TIMEOUT(engine().state(), Screencap::CapIdle, limitMs);
    m_page.reset();
    m_wall.reset();
}

void RecordPageTest::awaitRecording(const QString &time)
{
    QTRY_COMPARE_WITH_TIMEOUT(startText(), "暂停录制"_s, limitMs);
    QVERIFY(!isReady());
    QVERIFY(!part<QWidget>("wdtFolder")->isEnabled());
    QVERIFY(part("wbnCapStop")->isEnabled());
    QTRY_VERIFY_WITH_TIMEOUT(clock() >= time, limitMs);
}

void RecordPageTest::stopByKey()
{
    Desktop::key("ctrl+alt+r");
    QTRY_VERIFY_WITH_TIMEOUT(isReady(), limitMs);
    QCOMPARE(startText(), "开始录制"_s);
    QVERIFY(!part("wbnCapStop")->isEnabled());
    QCOMPARE(clock(), "00:00:00"_s);
    QTRY_VERIFY(!m_page->isMinimized());
    QVERIFY(!overlay());
}
