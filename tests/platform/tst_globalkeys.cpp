// SPDX-License-Identifier: MIT
#include "platform/globalkeys.h"
#include "platform/linux/xconnection.h"
#include "support/desktop.h"

#include <QSignalSpy>
#include <QtTest>
#include <QWidget>

class TestGlobalKeys : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qRegisterMetaType<Qt::Key>("Qt::Key"); }
    void arriveFromEverywhere();
    void holdingDownIsOnePress();
    void takenOnesAreTold();
};

namespace {

constexpr Qt::KeyboardModifiers modifiers = Qt::ControlModifier | Qt::AltModifier;

// The server takes what was sent before the answer.
void settle(const XConnection &connection)
{
    QVERIFY(atomOf(connection.get(), "WM_STATE") != XCB_ATOM_NONE);
}

} // namespace

// With another program's window in front, and with the locks on.
void TestGlobalKeys::arriveFromEverywhere()
{
    GlobalKeys keys;
    QSignalSpy presses(&keys, &GlobalKeys::pressed);
    QVERIFY(keys.hold(Qt::Key_R, modifiers));
    QVERIFY(keys.hold(Qt::Key_Escape));
    Desktop::key("ctrl+alt+r");
    QTRY_COMPARE(presses.size(), 1);
    QCOMPARE(presses.takeFirst().first().value<Qt::Key>(), Qt::Key_R);
    Desktop::key("Escape");
    QTRY_COMPARE(presses.size(), 1);
    QCOMPARE(presses.takeFirst().first().value<Qt::Key>(), Qt::Key_Escape);
    for (const char *lock : {"Num_Lock", "Caps_Lock"}) {
        Desktop::key(lock);
        Desktop::key("ctrl+alt+r");
        Desktop::key(lock);
        QTRY_COMPARE(presses.size(), 1);
        presses.clear();
    }

    Desktop::key("ctrl+r");
    Desktop::key("alt+r");
    Desktop::key("ctrl+alt+r");
    QTRY_COMPARE(presses.size(), 1);
    keys.giveBack();
    Desktop::key("ctrl+alt+r");
    QVERIFY(keys.hold(Qt::Key_P, modifiers));
    Desktop::key("ctrl+alt+p");
    QTRY_COMPARE(presses.size(), 2);
    QCOMPARE(presses.last().first().value<Qt::Key>(), Qt::Key_P);
}

void TestGlobalKeys::holdingDownIsOnePress()
{
    GlobalKeys keys;
    QSignalSpy presses(&keys, &GlobalKeys::pressed);
    QVERIFY(keys.hold(Qt::Key_R, modifiers));
    QVERIFY(keys.hold(Qt::Key_P, modifiers));
    // Longer than the server waits before it repeats a key.
    const QStringList words = {"keydown"_s, "ctrl+alt+r"_s, "sleep"_s,
                               "1.2"_s,     "keyup"_s,      "ctrl+alt+r"_s};
    QCOMPARE(QProcess::execute("xdotool"_s, words), 0);
    QTRY_COMPARE(presses.size(), 1);
    Desktop::key("ctrl+alt+p");
    QTRY_COMPARE(presses.size(), 2);
    QCOMPARE(presses.last().first().value<Qt::Key>(), Qt::Key_P);
    Desktop::key("ctrl+alt+r");
    QTRY_COMPARE(presses.size(), 3);
}

void TestGlobalKeys::takenOnesAreTold()
{
    const XConnection other;
    GlobalKeys mine;
    QVERIFY(mine.hold(Qt::Key_R, modifiers));
    mine.giveBack();
    // All but those that the window manager has.
    const xcb_setup_t *setup = xcb_get_setup(other.get());
    for (int code = setup->min_keycode; code <= setup->max_keycode; ++code)
        xcb_grab_key(other.get(), 0, other.screen()->root, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1,
                     xcb_keycode_t(code), XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    settle(other);
    QVERIFY(!mine.hold(Qt::Key_R, modifiers));
    xcb_ungrab_key(other.get(), XCB_GRAB_ANY, other.screen()->root, XCB_MOD_MASK_ANY);
    settle(other);
    QVERIFY(mine.hold(Qt::Key_R, modifiers));
    QVERIFY(!mine.hold(Qt::Key_F5, modifiers));
}

QTEST_MAIN(TestGlobalKeys)
#include "tst_globalkeys.moc"
