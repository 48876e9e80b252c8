// SPDX-License-Identifier: MIT
#pragma once

#include "support/utf8.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalSocket>
#include <QTest>

/// A second client of the player's socket, which asks in the player's JSON what the first has done.
class MpvPeer
{
public:
    bool isConnected() const { return m_connected; }

    explicit MpvPeer(const QString &server)
    {
        m_connected = QTest::qWaitFor([&] {
            m_socket.connectToServer(server);
            return m_socket.waitForConnected(100);
        });
    }

    QJsonValue property(const char *name)
    {
        const int id = ask({"get_property"_s, QLatin1String(name)});
        QJsonValue answer(QJsonValue::Undefined);
        const bool answered = QTest::qWaitFor([&] {
            while (m_socket.canReadLine()) {
                const QJsonObject line = QJsonDocument::fromJson(m_socket.readLine()).object();
                if (line.value("request_id"_s).toInt() == id) {
                    answer = line.value("data"_s);
                    return true;
                }
            }
            return false;
        });
        return answered ? answer : QJsonValue(QJsonValue::Undefined);
    }

    void observe(const char *name) { ask({"observe_property"_s, 1, QLatin1String(name)}); }
    /// How often what is observed has changed since it was asked last.
    int changes()
    {
        int count = 0;
        m_socket.waitForReadyRead(100);
        while (m_socket.canReadLine())
            count += m_socket.readLine().contains("\"property-change\"");
        return count;
    }

private:
    int ask(const QJsonArray &command)
    {
        const QJsonObject question{{"command"_s, command}, {"request_id"_s, ++m_lastId}};
        m_socket.write(QJsonDocument(question).toJson(QJsonDocument::Compact) + '\n');
        return m_lastId;
    }

    QLocalSocket m_socket;
    bool m_connected = false;
    int m_lastId = 0;
};
