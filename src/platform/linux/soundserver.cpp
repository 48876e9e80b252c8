// SPDX-License-Identifier: MIT
#include "platform/soundserver.h"

#include <QElapsedTimer>

#include <atomic>
#include <vector>

#include <pulse/pulseaudio.h>

namespace {

constexpr char clientName[] = "Morvane";
constexpr char playedSound[] = "@DEFAULT_MONITOR@"; // the server's name for it
// A server on this machine answers within a few ms; one that hangs must not hold up a window.
constexpr int answerTimeoutMs = 1000;
constexpr pa_usec_t stepUs = 10000;

// A connection that is served only while somebody waits for its answer.
class SoundConnection
{
public:
    SoundConnection() : m_loop(pa_mainloop_new())
    {
        m_waited.start();
        m_context = pa_context_new(pa_mainloop_get_api(m_loop), clientName);
        if (pa_context_connect(m_context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) >= 0)
            wait([this] { return !PA_CONTEXT_IS_GOOD(state()) || state() == PA_CONTEXT_READY; });
    }
    ~SoundConnection()
    {
        pa_context_disconnect(m_context);
        pa_context_unref(m_context);
        pa_mainloop_free(m_loop);
    }
    SoundConnection(const SoundConnection &) = delete;
    SoundConnection &operator=(const SoundConnection &) = delete;

    bool isReady() const { return state() == PA_CONTEXT_READY; }
    pa_context *context() const { return m_context; }

    void finish(pa_operation *operation)
    {
        if (operation == nullptr)
            return;
        wait([operation] { return pa_operation_get_state(operation) != PA_OPERATION_RUNNING; });
        pa_operation_cancel(operation);
        pa_operation_unref(operation);
    }

private:
    pa_context_state_t state() const { return pa_context_get_state(m_context); }

    template<class Condition>
    void wait(const Condition &isMet)
    {
        while (!isMet() && m_waited.elapsed() < answerTimeoutMs) {
            if (pa_mainloop_prepare(m_loop, int(stepUs)) < 0 || pa_mainloop_poll(m_loop) < 0 ||
                pa_mainloop_dispatch(m_loop) < 0)
                return;
        }
    }

    QElapsedTimer m_waited; // for all answers together
    pa_mainloop *m_loop;
    pa_context *m_context = nullptr;
};

void addDevice(void *devices, const char *name, const char *title)
{
    static_cast<QVector<SoundDevice> *>(devices)->append(
        {QString::fromUtf8(name), QString::fromUtf8(title)});
}

void takeInput(pa_context *, const pa_source_info *info, int, void *devices)
{
    if (info != nullptr && info->monitor_of_sink == PA_INVALID_INDEX)
        addDevice(devices, info->name, info->description);
}

void takeOutput(pa_context *, const pa_sink_info *info, int, void *devices)
{
    if (info != nullptr)
        addDevice(devices, info->name, info->description);
}

} // namespace

SoundDevices soundDevices()
{
    SoundDevices devices;
    SoundConnection connection;
    devices.isServerReachable = connection.isReady();
    if (!devices.isServerReachable)
        return devices;
    connection.finish(
        pa_context_get_source_info_list(connection.context(), &takeInput, &devices.inputs));
    connection.finish(
        pa_context_get_sink_info_list(connection.context(), &takeOutput, &devices.outputs));
    return devices;
}

// Lives on a thread of the sound library; what is recorded is thrown away.
class AwakeSound::Streams
{
public:
    explicit Streams(const std::vector<QByteArray> &names);
    ~Streams();
    Streams(const Streams &) = delete;
    Streams &operator=(const Streams &) = delete;

    bool isAwake() const { return m_asleep <= 0; }

private:
    static void onState(pa_context *context, void *self);
    static void takeFirst(pa_stream *stream, size_t length, void *self);
    static void discard(pa_stream *stream, size_t length, void *self);
    void open(const QByteArray &name);

    const std::vector<QByteArray> m_names;
    pa_threaded_mainloop *m_loop;
    pa_context *m_context;
    std::vector<pa_stream *> m_opened;
    std::atomic<int> m_asleep;
};

AwakeSound::Streams::Streams(const std::vector<QByteArray> &names)
    : m_names(names),
      m_loop(pa_threaded_mainloop_new()),
      m_context(pa_context_new(pa_threaded_mainloop_get_api(m_loop), clientName)),
      m_asleep(int(names.size()))
{
    pa_context_set_state_callback(m_context, &Streams::onState, this);
    pa_context_connect(m_context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
    pa_threaded_mainloop_start(m_loop);
}

AwakeSound::Streams::~Streams()
{
    pa_threaded_mainloop_stop(m_loop);
    for (pa_stream *stream : m_opened) {
        pa_stream_disconnect(stream);
        pa_stream_unref(stream);
    }
    pa_context_set_state_callback(m_context, nullptr, nullptr);
    pa_context_disconnect(m_context);
    pa_context_unref(m_context);
    pa_threaded_mainloop_free(m_loop);
}

void AwakeSound::Streams::onState(pa_context *context, void *self)
{
    auto *const streams = static_cast<Streams *>(self);
    if (pa_context_get_state(context) != PA_CONTEXT_READY)
        return;
    for (const QByteArray &name : streams->m_names)
        streams->open(name);
}

void AwakeSound::Streams::open(const QByteArray &name)
{
    // Little work, but blocks as short as the recording's own: a source that gives long ones has
    // to finish such a one first.
    const pa_sample_spec form = {PA_SAMPLE_S16LE, 8000, 1};
    const pa_buffer_attr blocks = {uint32_t(-1), uint32_t(-1), uint32_t(-1), uint32_t(-1), 320};
    pa_stream *const stream = pa_stream_new(m_context, "awake", &form, nullptr);
    if (stream == nullptr)
        return;
    m_opened.push_back(stream);
    pa_stream_set_read_callback(stream, &Streams::takeFirst, this);
    pa_stream_connect_record(stream, name.constData(), &blocks, PA_STREAM_ADJUST_LATENCY);
}

void AwakeSound::Streams::takeFirst(pa_stream *stream, size_t length, void *self)
{
    --static_cast<Streams *>(self)->m_asleep;
    pa_stream_set_read_callback(stream, &Streams::discard, nullptr);
    discard(stream, length, nullptr);
}

void AwakeSound::Streams::discard(pa_stream *stream, size_t, void *)
{
    const void *data = nullptr;
    size_t length = 0;
    while (pa_stream_readable_size(stream) > 0) {
        if (pa_stream_peek(stream, &data, &length) < 0 || length == 0)
            return;
        pa_stream_drop(stream);
    }
}

AwakeSound::AwakeSound(const QVector<QString> &inputs, bool isPlayedSoundWanted)
    : m_streams([&] {
          std::vector<QByteArray> names;
          if (isPlayedSoundWanted)
              names.emplace_back(playedSound);
          for (const QString &input : inputs)
              names.push_back(input.toUtf8());
          return names.empty() ? nullptr : std::make_unique<Streams>(names);
      }())
{
}

AwakeSound::~AwakeSound() = default;

bool AwakeSound::isAwake() const
{
    return !m_streams || m_streams->isAwake();
}
