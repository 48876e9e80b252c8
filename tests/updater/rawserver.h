// SPDX-License-Identifier: MIT
#pragma once

#include "support/utf8.h"

#include <QByteArray>
#include <QString>
#include <QTcpServer>

/// A server on a free port of 127.0.0.1 that sends exactly the bytes it is given, right or wrong,
/// to whoever asks.
class RawServer : public QTcpServer
{
public:
    enum class Then {
        Close,
        Wait,   ///< keeps silent
        Repeat, ///< goes on with the same bytes, without end
    };

    /// @param isSecret speaks TLS, with a certificate that nobody trusts
    RawServer(const QByteArray &answer, Then then, bool isSecret = false);

    QString address(const char *path = "/package") const;

protected:
    void incomingConnection(qintptr handle) override;

private:
    void serve();

    const QByteArray m_answer;
    const Then m_then;
    const bool m_isSecret;
};
