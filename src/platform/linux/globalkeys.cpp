// SPDX-License-Identifier: MIT
#include "platform/globalkeys.h"

#include "platform/linux/xconnection.h"

#include <QCoreApplication>
#include <QX11Info>

#include <algorithm>

namespace {

constexpr uint32_t escapeSymbol = 0xff1b;
constexpr uint16_t usedModifiers =
    XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4;
// A grab is for an exact set of modifiers, and the locks are among these: Caps Lock, Num Lock.
constexpr uint16_t lockSets[] = {0, XCB_MOD_MASK_LOCK, XCB_MOD_MASK_2,
                                 XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2};
// A held key repeats by presses alone or, as programs hear it by default, by pairs of a release and
// a press of the same moment.
constexpr quint32 longestPairMs = 2;
// It does so after 660 ms at first by default. What comes later is a press whose release went
// elsewhere, as to a screen lock.
constexpr quint32 longestRepeatMs = 1500;

// Of a letter its small one, which is how the keyboard's table begins.
uint32_t symbolOf(Qt::Key key)
{
    if (key == Qt::Key_Escape)
        return escapeSymbol;
    return key >= Qt::Key_A && key <= Qt::Key_Z ? uint32_t('a' + key - Qt::Key_A) : 0;
}

uint16_t maskOf(Qt::KeyboardModifiers modifiers)
{
    const std::pair<Qt::KeyboardModifier, uint16_t> masks[] = {
        {Qt::ShiftModifier, XCB_MOD_MASK_SHIFT},
        {Qt::ControlModifier, XCB_MOD_MASK_CONTROL},
        {Qt::AltModifier, XCB_MOD_MASK_1},
        {Qt::MetaModifier, XCB_MOD_MASK_4}};
    uint16_t mask = 0;
    for (const auto &[modifier, bit] : masks)
        mask |= modifiers.testFlag(modifier) ? bit : 0;
    return mask;
}

// 0 when no key has the symbol in any of its layouts.
uint8_t codeOf(xcb_connection_t *connection, uint32_t symbol)
{
    const xcb_setup_t *setup = xcb_get_setup(connection);
    const XReply<xcb_get_keyboard_mapping_reply_t> reply(xcb_get_keyboard_mapping_reply(
        connection,
        xcb_get_keyboard_mapping(connection, setup->min_keycode,
                                 uint8_t(setup->max_keycode - setup->min_keycode + 1)),
        nullptr));
    if (!reply || reply->keysyms_per_keycode == 0 || symbol == 0)
        return 0;
    const xcb_keysym_t *first = xcb_get_keyboard_mapping_keysyms(reply.get());
    const xcb_keysym_t *end = first + xcb_get_keyboard_mapping_keysyms_length(reply.get());
    const xcb_keysym_t *found = std::find(first, end, symbol);
    return found == end
               ? 0
               : uint8_t(setup->min_keycode + (found - first) / reply->keysyms_per_keycode);
}

void ungrab(uint8_t code, uint16_t modifiers)
{
    xcb_connection_t *connection = QX11Info::connection();
    for (uint16_t locks : lockSets)
        xcb_ungrab_key(connection, code, xcb_window_t(QX11Info::appRootWindow()),
                       uint16_t(modifiers | locks));
    xcb_flush(connection);
}

bool grab(uint8_t code, uint16_t modifiers)
{
    xcb_connection_t *connection = QX11Info::connection();
    bool isGranted = true;
    for (uint16_t locks : lockSets) {
        const XReply<xcb_generic_error_t> error(xcb_request_check(
            connection, xcb_grab_key_checked(connection, 0, xcb_window_t(QX11Info::appRootWindow()),
                                             uint16_t(modifiers | locks), code, XCB_GRAB_MODE_ASYNC,
                                             XCB_GRAB_MODE_ASYNC)));
        isGranted = isGranted && !error;
    }
    if (!isGranted)
        ungrab(code, modifiers);
    return isGranted;
}

} // namespace

GlobalKeys::GlobalKeys(QObject *parent) : QObject(parent)
{
    QCoreApplication::instance()->installNativeEventFilter(this);
}

GlobalKeys::~GlobalKeys()
{
    giveBack();
}

bool GlobalKeys::hold(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    if (!QX11Info::isPlatformX11())
        return false;
    const uint16_t mask = maskOf(modifiers);
    const uint8_t code = codeOf(QX11Info::connection(), symbolOf(key));
    if (code == 0 || !grab(code, mask))
        return false;
    m_held += {key, code, mask, false, 0, 0};
    return true;
}

void GlobalKeys::giveBack()
{
    for (const Held &held : m_held)
        ungrab(held.code, held.modifiers);
    m_held.clear();
}

bool GlobalKeys::nativeEventFilter(const QByteArray &eventType, void *message, long * /*result*/)
{
    if (eventType != QByteArrayLiteral("xcb_generic_event_t"))
        return false;
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    const int type = event->response_type & ~0x80; // that bit tells of an event sent by a program
    if (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE)
        return false;
    const auto *key = reinterpret_cast<const xcb_key_press_event_t *>(event);
    const auto held = std::find_if(m_held.begin(), m_held.end(), [key](const Held &one) {
        return one.code == key->detail && one.modifiers == (key->state & usedModifiers);
    });
    if (type == XCB_KEY_RELEASE) {
        // The modifiers may have been let go before.
        for (Held &one : m_held) {
            if (one.code != key->detail)
                continue;
            one.isDown = false;
            one.lastRelease = key->time;
        }
        return false;
    }
    if (held == m_held.end() || key->event != xcb_window_t(QX11Info::appRootWindow()))
        return false;
    const bool isRepeat = held->isDown ? key->time - held->lastPress < longestRepeatMs
                                       : key->time - held->lastRelease <= longestPairMs;
    held->isDown = true;
    held->lastPress = key->time;
    // Later: who hears of it may run a dialog.
    if (!isRepeat)
        QMetaObject::invokeMethod(
            this, [this, name = held->key] { emit pressed(name); }, Qt::QueuedConnection);
    return true;
}
