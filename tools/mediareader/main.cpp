// SPDX-License-Identifier: MIT
// Reads media files for the program that has started it: requests on the standard input, answers on
// the standard output, until the input ends. Each file is read in a process of its own, which may
// open nothing else, so that a file can neither hold up nor bring down the next.
#include "cage/cage.h"
#include "mediareader/libraryreading.h"
#include "platform/utf8locale.h"

#include <QDataStream>
#include <QElapsedTimer>
#include <QFile>

#include <csignal>
#include <optional>

#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// The largest real files take a tenth of a second on a slow disk.
constexpr int limitMs = 5000;
constexpr rlim_t mostMemoryBytes = rlim_t(2) << 30;

void limitMemory()
{
    // A sanitizer claims terabytes of addresses.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    const rlimit limit{mostMemoryBytes, mostMemoryBytes};
    setrlimit(RLIMIT_AS, &limit);
#endif
}

// What isn't a file, as a pipe or a device, might never answer.
bool isFile(const QByteArray &path)
{
    struct stat facts
    {
    };
    return stat(path.constData(), &facts) == 0 && S_ISREG(facts.st_mode);
}

[[noreturn]] void readAlone(const ReadRequest &request, int answers)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    close(STDIN_FILENO);
    close(STDOUT_FILENO);
    limitMemory();
    const QByteArray path = QFile::encodeName(request.path);
    cage::Needs needs;
    needs.readable.push_back(path.toStdString());
    cage::confine(needs);
    ReadAnswer answer{ReadOutcome::NoMedia, {}};
    if (isFile(path))
        answer.info = readWithLibrary(request.path, request.depth);
    if (answer.info)
        answer.outcome = ReadOutcome::Read;
    const QByteArray message = packed(answer);
    const ssize_t written = write(answers, message.constData(), size_t(message.size()));
    _exit(written == message.size() ? EXIT_SUCCESS : EXIT_FAILURE);
}

// All that comes until the writer ends; nothing when that takes too long or is too much.
std::optional<QByteArray> readLimited(int from)
{
    QElapsedTimer clock;
    clock.start();
    QByteArray all;
    while (all.size() <= int(mostAnswerBytes)) {
        pollfd place{from, POLLIN, 0};
        const int left = limitMs - int(clock.elapsed());
        if (left <= 0 || poll(&place, 1, left) == 0)
            return std::nullopt;
        constexpr int pipeBytes = 65536;
        QByteArray part(pipeBytes, Qt::Uninitialized);
        const ssize_t count = read(from, part.data(), size_t(part.size()));
        if (count <= 0)
            return all;
        all.append(part.constData(), int(count));
    }
    return std::nullopt;
}

QByteArray answerTo(const ReadRequest &request)
{
    int ends[2];
    if (pipe(ends) != 0)
        return packed(ReadAnswer());
    const pid_t reader = fork();
    if (reader == 0) {
        close(ends[0]);
        readAlone(request, ends[1]);
    }
    close(ends[1]);
    std::optional<QByteArray> message;
    if (reader > 0) {
        message = readLimited(ends[0]);
        if (!message)
            kill(reader, SIGKILL);
    }
    close(ends[0]);
    return message.value_or(packed(ReadAnswer()));
}

// What the library sets up with its first file is there for all forks then, which takes half of
// their time from them. It is a sound of four samples in memory; no file of the user's is read in
// this process.
void warmUp()
{
    constexpr char sound[] = "RIFF\x2c\0\0\0WAVEfmt \x10\0\0\0\1\0\1\0\x44\xac\0\0\x88\x58\1\0"
                             "\2\0\x10\0data\x8\0\0\0\0\0\0\0\0\0\0";
    const int file = memfd_create("sound", MFD_CLOEXEC);
    if (write(file, sound, sizeof sound) == ssize_t(sizeof sound))
        readWithLibrary(QStringLiteral("/proc/self/fd/%1").arg(file), ReadDepth::Streams);
    close(file);
}

} // namespace

int main()
{
    ensureUtf8Locale();
    // The system clears away what has ended, and nobody waits for a disk that no longer answers.
    std::signal(SIGCHLD, SIG_IGN);
    std::signal(SIGPIPE, SIG_DFL);
    warmUp();
    // Without a buffer it takes no more than what is there.
    QFile input;
    QFile output;
    if (!input.open(stdin, QIODevice::ReadOnly | QIODevice::Unbuffered) ||
        !output.open(stdout, QIODevice::WriteOnly))
        return EXIT_FAILURE;
    QDataStream requests(&input);
    QDataStream answers(&output);
    QByteArray message;
    while ((requests >> message).status() == QDataStream::Ok) {
        answers << answerTo(unpackedRequest(message));
        output.flush();
    }
    return EXIT_SUCCESS;
}
