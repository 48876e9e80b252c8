// SPDX-License-Identifier: MIT
#pragma once

#include "support/testmedia.h"
#include "support/utf8.h"

#include <QVector>

#include <cmath>
#include <cstring>

/// What a player would let be heard of a file's first sound, one channel of it, from the film's
/// beginning on.
class HeardSound
{
public:
    static constexpr int rate = 16000;

    /// @param channel from 0
    explicit HeardSound(const QString &path, int channel = 0)
    {
        const QByteArray raw = decodedMedia(
            path, "-map 0:a:0 -af aresample=async=1:first_pts=0,pan=mono|c0=c%1 -ar %2 -f f32le"_s
                      .arg(channel)
                      .arg(rate));
        m_samples.resize(raw.size() / int(sizeof(float)));
        std::memcpy(m_samples.data(), raw.constData(), size_t(m_samples.size()) * sizeof(float));
    }

    double seconds() const { return double(m_samples.size()) / rate; }
    const QVector<float> &samples() const { return m_samples; }

    /// Amplitude of a tone that swings a whole number of times in 10 ms.
    double level(int hertz, double from, double to) const
    {
        const int begin = int(from * rate);
        const int end = std::min(int(to * rate), m_samples.size());
        double real = 0.0;
        double imaginary = 0.0;
        for (int i = begin; i < end; ++i) {
            const double angle = 2.0 * M_PI * hertz * i / rate;
            real += double(m_samples[i]) * std::cos(angle);
            imaginary += double(m_samples[i]) * std::sin(angle);
        }
        return end > begin ? 2.0 * std::hypot(real, imaginary) / (end - begin) : 0.0;
    }

    /// Where a tone begins, in seconds; -1 when it is never heard.
    double onset(int hertz) const
    {
        constexpr double window = 0.01;
        constexpr double step = 0.001;
        double loudest = 0.0;
        for (double at = 0.0; at + window <= seconds(); at += window)
            loudest = std::max(loudest, level(hertz, at, at + window));
        for (double at = 0.0; loudest > 0.001 && at + window <= seconds(); at += step) {
            if (level(hertz, at, at + window) > loudest / 2.0)
                return at + window / 2.0;
        }
        return -1.0;
    }

private:
    QVector<float> m_samples;
};

/// How alike two sounds are, 1 for the same but for their loudness.
/// @param offset seconds of the second that are left out at its beginning
inline double correlation(const HeardSound &one, const HeardSound &other, double offset = 0.0)
{
    const int skipped = qRound(offset * HeardSound::rate);
    const int count = std::min(one.samples().size(), other.samples().size() - skipped);
    double product = 0.0;
    double ownSquares = 0.0;
    double otherSquares = 0.0;
    for (int i = 0; i < count; ++i) {
        const double a = double(one.samples()[i]);
        const double b = double(other.samples()[i + skipped]);
        product += a * b;
        ownSquares += a * a;
        otherSquares += b * b;
    }
    return product / std::sqrt(ownSquares * otherSquares);
}
