// SPDX-License-Identifier: MIT
#include "fuzz/fuzz.h"

#include <QDir>
#include <QRegularExpression>
#include <QtTest>

#include <csignal>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

extern "C" void __sanitizer_set_death_callback(void (*callback)()) __attribute__((weak));
extern "C" void __lsan_disable() __attribute__((weak));

namespace {

// An input takes milliseconds, some a run of a tool.
constexpr unsigned hangSeconds = 30;

// What a dying program can still reach, at its very end, too.
QByteArray &presentInput = *new QByteArray;
char keptPath[512] = "";

void keepInput()
{
    const int file = ::open(keptPath, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file < 0)
        return;
    const ssize_t written = ::write(file, presentInput.constData(), size_t(presentInput.size()));
    const char *const texts[] = {"\nthe input is kept in ", keptPath, "\n"};
    for (const char *text : texts) {
        if (written >= 0 && ::write(STDERR_FILENO, text, std::strlen(text)) < 0)
            break;
    }
    ::close(file);
}

void onDeath(int signal)
{
    keepInput();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void watchForDeath(const char *target)
{
    const QString name =
        "morvane-fuzz-"_s + QLatin1String(target) + u'-' + QString::number(getpid());
    const QString path = QDir::temp().filePath(name);
    qstrncpy(keptPath, QFile::encodeName(path).constData(), sizeof keptPath);
    std::signal(SIGALRM, onDeath);
    // Qt's reader of JSON loses some bytes with each broken text.
    if (__lsan_disable != nullptr)
        __lsan_disable();
    if (__sanitizer_set_death_callback != nullptr) {
        __sanitizer_set_death_callback(keepInput);
        return;
    }
    for (const int signal : {SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL})
        std::signal(signal, onDeath);
}

double wantedSeconds(double usual)
{
    const double wanted = qEnvironmentVariable("MORVANE_FUZZ_SECONDS").toDouble();
    return wanted > 0 ? wanted : usual;
}

} // namespace

Fuzz::Fuzz(const char *target, double seconds)
    : m_target(target),
      m_seconds(wantedSeconds(seconds)),
      m_seed(qMax<quint64>(1, qEnvironmentVariable("MORVANE_FUZZ_SEED").toULongLong())),
      m_random(m_seed)
{
    watchForDeath(target);
    m_clock.start();
}

Fuzz::~Fuzz()
{
    ::alarm(0);
    std::printf("%s: %lld inputs in %.1f s, seed %llu\n", m_target, static_cast<long long>(m_count),
                double(m_clock.elapsed()) / 1000, static_cast<unsigned long long>(m_seed));
    std::fflush(stdout);
}

bool Fuzz::goesOn() const
{
    return !QTest::currentTestFailed() && double(m_clock.elapsed()) / 1000 < m_seconds;
}

int Fuzz::below(int limit)
{
    return int(m_random() % quint64(qMax(limit, 1)));
}

QString Fuzz::textOf(const QString &characters, int most)
{
    const QVector<uint> all = characters.toUcs4();
    QVector<uint> text;
    for (int left = 1 + below(most); left > 0; --left)
        text += oneOf(all);
    return QString::fromUcs4(text.constData(), text.size());
}

void Fuzz::mutateNumber(QByteArray &bytes)
{
    static const QRegularExpression number("-?[0-9]+(\\.[0-9]+)?"_s);
    static const char *const values[] = {"-1",
                                         "0",
                                         "-0",
                                         "1e308",
                                         "nan",
                                         "inf",
                                         "2147483647",
                                         "2147483648",
                                         "-9223372036854775808",
                                         "18446744073709551616",
                                         "99999999999999999999999999999999999999999",
                                         "1e-320",
                                         ""};
    auto match = number.globalMatch(QString::fromLatin1(bytes));
    QVector<QRegularExpressionMatch> all;
    while (match.hasNext())
        all += match.next();
    if (all.isEmpty())
        return;
    const QRegularExpressionMatch &one = all.at(below(all.size()));
    bytes.replace(one.capturedStart(), one.capturedLength(), oneOf(values));
}

void Fuzz::mutateOnce(QByteArray &bytes)
{
    static const char interesting[] = "\0\xff\x7f\x80\n\r\"'\\{}[],:;=% -.0";
    const int at = below(bytes.size());
    const int length = below(qMin(bytes.size() - at, 1 << below(12)) + 1);
    switch (below(bytes.isEmpty() ? 1 : 9)) {
    case 0:
        bytes.insert(at, interesting[below(sizeof interesting - 1)]);
        break;
    case 1:
        bytes[at] = char(bytes[at] ^ (1 << below(8)));
        break;
    case 2:
        bytes[at] = char(below(256));
        break;
    case 3:
        bytes[at] = interesting[below(sizeof interesting - 1)];
        break;
    case 4:
        bytes.remove(at, length);
        break;
    case 5:
        bytes.insert(below(bytes.size()), bytes.mid(at, length));
        break;
    case 6:
        bytes.truncate(below(4) == 0 ? at : bytes.size());
        break;
    default:
        mutateNumber(bytes);
    }
}

QByteArray Fuzz::mutated(QByteArray seed)
{
    for (int left = 1 + below(4); left > 0; --left)
        mutateOnce(seed);
    return seed;
}

QList<QByteArray> Fuzz::pieces(const QByteArray &bytes)
{
    QList<QByteArray> all;
    for (int at = 0; at < bytes.size();) {
        const int length = 1 + below(1 << below(10));
        all += bytes.mid(at, length);
        at += length;
    }
    return all;
}

const QByteArray &Fuzz::take(const QByteArray &input)
{
    ++m_count;
    presentInput = input;
    ::alarm(hangSeconds);
    return presentInput;
}

const char *Fuzz::kept()
{
    keepInput();
    return keptPath;
}
