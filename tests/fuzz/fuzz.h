// SPDX-License-Identifier: MIT
#pragma once

#include "support/utf8.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QStringList>

#include <random>

/// Fails the test when something doesn't hold for the present input, and tells where that is kept.
#define FUZZ_VERIFY(holds)                                                                         \
    do {                                                                                           \
        const bool isGood = (holds);                                                               \
        QVERIFY2(isGood, isGood ? "" : Fuzz::kept());                                              \
    } while (false)

/// One run over inputs that are made up: always the same ones, and as many as its time allows.
/// `MORVANE_FUZZ_SEED` gives it others, `MORVANE_FUZZ_SECONDS` more time. An input on which the
/// program dies or hangs is written to a file whose path is printed.
class Fuzz
{
public:
    /// @param seconds that it takes when nothing else is asked for
    explicit Fuzz(const char *target, double seconds = 1.0);
    /// Prints how many inputs there were.
    ~Fuzz();
    Q_DISABLE_COPY(Fuzz)

    /// Whether there is time for a further input, or the test has failed.
    bool goesOn() const;

    /// From 0 on, below the limit.
    int below(int limit);
    template<class List>
    auto oneOf(const List &list)
    {
        return *(std::begin(list) + below(int(std::end(list) - std::begin(list))));
    }
    /// A text of such characters, of 1 to `most` of them.
    QString textOf(const QString &characters, int most);
    /// Bits, bytes, numbers and stretches of the seed changed, moved, dropped and doubled.
    QByteArray mutated(QByteArray seed);
    /// The same bytes in pieces.
    QList<QByteArray> pieces(const QByteArray &bytes);

    /// Names the input that is worked on from now on.
    const QByteArray &take(const QByteArray &input);
    /// For a test that fails: keeps the present input and tells where.
    static const char *kept();

private:
    void mutateOnce(QByteArray &bytes);
    void mutateNumber(QByteArray &bytes);

    const char *m_target;
    const double m_seconds;
    const quint64 m_seed;
    std::mt19937_64 m_random;
    QElapsedTimer m_clock;
    qint64 m_count = 0;
};
