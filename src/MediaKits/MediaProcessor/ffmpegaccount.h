// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

/// What ffmpeg tells about a run besides its exit code, which is 0 for many a result that isn't
/// what was asked for.
struct FFmpegAccount
{
    /// Length in ms that the first input's header tells; 0 where it tells none, where ffmpeg could
    /// only guess it, and where the input doesn't begin at its own beginning.
    int inputMs = 0;
    /// Places of the inputs that could not be decoded, or only with something made up.
    int damagedPlaces = 0;
    /// An input ended before the place where its index says that there is more.
    bool inputCutOff = false;
    /// The system could not read an input to its end. ffmpeg takes that for the end, and ends well.
    bool inputUnreadable = false;
    /// The cover of a song could not be decoded.
    bool coverLost = false;
    /// Position in ms that the output reached.
    qint64 writtenMs = 0;
    /// Size of the coded picture and sound in kB as ffmpeg rounds it; -1 while it hasn't told.
    int pictureKb = -1;
    int soundKb = -1;

    /// Whether a run that has ended coded nothing at all.
    bool isEmpty() const { return writtenMs <= 0 && pictureKb == 0 && soundKb == 0; }
};

/// Reads ffmpeg's report line by line as it comes, so that a source which makes it complain a
/// million times costs no memory.
class FFmpegAccountReader
{
public:
    /// @param bytes the next piece of ffmpeg's standard error
    void feedReport(const QByteArray &bytes);
    /// @param positionUs a position of the progress protocol
    void feedPosition(qint64 positionUs);

    FFmpegAccount account() const;

private:
    enum class Damage { None, CorruptFrame, DecodingError };

    void readLine(const QByteArray &line);
    void readInput(const QByteArray &line);
    void readCover(const QByteArray &line);
    void setFormat(const QByteArray &name);
    void count(Damage damage, int times);

    FFmpegAccount m_account;
    QByteArray m_rest;
    QByteArray m_coverError; ///< how the line begins that tells of a broken cover, once it is known
    bool m_isBegun = false;  ///< every output has got its first frame
    bool m_isRawSound = false;  ///< the input is a bare stream of sound frames
    bool m_isRecording = false; ///< the input may be cut anywhere
    bool m_lengthIsGuess = false;
    Damage m_last = Damage::None; ///< of the line before, which may be said to be repeated
    int m_corruptFrames = 0;
    int m_decodingErrors = 0;
};
