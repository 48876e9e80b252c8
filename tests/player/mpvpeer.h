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
        const int id = ++m_lastId;
        const QJsonObject question{{"command"_s, QJsonArray{"get_property"_s, QLatin1String(name)}},
                                   {"request_id"_s, id}};
        m_socket.write(QJsonDocument(question).toJson(QJsonDocument::Compact) + '\n');
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

private:
    QLocalSocket m_socket;
    bool m_connected = false;
    int m_lastId = 0;
};
