// SPDX-License-Identifier: MIT
// Shows a white area and plays a tone at the same moments, on black and in silence: what a
// recording of both has to keep together. Tells the moment of each flash on standard output, in ms
// since the epoch. Ends when it is killed.
//   flashclick EVERY_MS [X,Y,W,H [HERTZ]]
#include <pulse/simple.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include <xcb/xcb.h>

namespace {

constexpr uint32_t rate = 44100;
constexpr int blockMs = 5;
constexpr int flashMs = 200;
constexpr size_t blockSamples = size_t(rate) * blockMs / 1000;

int64_t nowUs()
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::microseconds>(now).count();
}

class Area
{
public:
    Area(int16_t x, int16_t y, uint16_t width, uint16_t height)
        : m_width(width), m_height(height), m_connection(xcb_connect(nullptr, nullptr))
    {
        const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
        m_window = xcb_generate_id(m_connection);
        m_context = xcb_generate_id(m_connection);
        const uint32_t values[] = {screen->black_pixel, 1};
        xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, screen->root, x, y, width,
                          height, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual,
                          XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values);
        xcb_create_gc(m_connection, m_context, m_window, 0, nullptr);
        xcb_map_window(m_connection, m_window);
        xcb_flush(m_connection);
    }

    void fill(uint32_t colour)
    {
        const xcb_rectangle_t all = {0, 0, m_width, m_height};
        xcb_change_gc(m_connection, m_context, XCB_GC_FOREGROUND, &colour);
        xcb_poly_fill_rectangle(m_connection, m_window, m_context, 1, &all);
        xcb_flush(m_connection);
    }

private:
    uint16_t m_width;
    uint16_t m_height;
    xcb_connection_t *m_connection;
    xcb_window_t m_window = 0;
    xcb_gcontext_t m_context = 0;
};

} // namespace

int main(int argc, char **argv)
{
    const int64_t everyUs = int64_t(argc > 1 ? std::atoi(argv[1]) : 1000) * 1000;
    int box[] = {0, 0, 320, 240};
    if (argc > 2)
        std::sscanf(argv[2], "%d,%d,%d,%d", &box[0], &box[1], &box[2], &box[3]);
    const int hertz = argc > 3 ? std::atoi(argv[3]) : 1000;
    Area area{int16_t(box[0]), int16_t(box[1]), uint16_t(box[2]), uint16_t(box[3])};
    const pa_sample_spec form = {PA_SAMPLE_S16LE, rate, 1};
    const pa_buffer_attr buffer = {uint32_t(-1), blockSamples * 2 * 4, uint32_t(-1), uint32_t(-1),
                                   uint32_t(-1)};
    pa_simple *const player = pa_simple_new(nullptr, "flashclick", PA_STREAM_PLAYBACK, nullptr,
                                            "tones", &form, nullptr, &buffer, nullptr);
    if (player == nullptr)
        return 1;
    std::vector<int16_t> block(blockSamples);
    int64_t next = nowUs() + everyUs;
    bool isLit = false;
    uint32_t phase = 0;
    while (true) {
        // What is written now is heard when all before it has been.
        const int64_t heard = nowUs() + int64_t(pa_simple_get_latency(player, nullptr));
        const bool tone = heard >= next && heard < next + flashMs * 1000;
        for (int16_t &sample : block)
            sample =
                tone ? int16_t(12000 * std::sin(2 * M_PI * hertz * phase++ / rate)) : int16_t(0);
        if (pa_simple_write(player, block.data(), block.size() * 2, nullptr) < 0)
            return 1;
        const int64_t now = nowUs();
        const bool lit = now >= next && now < next + flashMs * 1000;
        if (lit != isLit)
            area.fill(lit ? 0xffffff : 0);
        if (lit && !isLit) {
            std::printf("%lld\n", static_cast<long long>(now / 1000));
            std::fflush(stdout);
        }
        isLit = lit;
        if (now >= next + flashMs * 1000)
            next += everyUs;
    }
}
