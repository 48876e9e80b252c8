// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QVector>

/// Keys that reach the program whichever window has the keyboard, and no other program meanwhile.
/// They are given back when this object goes.
class GlobalKeys : public QObject, private QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    explicit GlobalKeys(QObject *parent = nullptr);
    ~GlobalKeys() override;

    /// @param key a letter or Escape
    /// @return false when another program has it already, or the keyboard or an X display lacks it
    bool hold(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void giveBack();

signals:
    /// Once a press, however long the key is held down.
    void pressed(Qt::Key key);

private:
    struct Held
    {
        Qt::Key key;
        quint8 code; // of the keyboard
        quint16 modifiers;
        bool isDown;
        quint32 lastPress;   // ms, of the display server
        quint32 lastRelease; // likewise
    };

    bool nativeEventFilter(const QByteArray &eventType, void *message, long *result) override;

    QVector<Held> m_held;
};
