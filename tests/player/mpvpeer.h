// SPDX-License-Identifier: MIT
#pragma once

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
        const QJsonObject question{
            {QStringLiteral("command"),
             QJsonArray{QStringLiteral("get_property"), QLatin1String(name)}},
            {QStringLiteral("request_id"), id}};
        m_socket.write(QJsonDocument(question).toJson(QJsonDocument::Compact) + '\n');
        QJsonValue answer(QJsonValue::Undefined);
        const bool answered = QTest::qWaitFor([&] {
            while (m_socket.canReadLine()) {
                const QJsonObject line = QJsonDocument::fromJson(m_socket.readLine()).object();
                if (line.value(QLatin1String("request_id")).toInt() == id) {
                    answer = line.value(QLatin1String("data"));
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
