// SPDX-License-Identifier: MIT
#pragma once

#include <QBuffer>
#include <QImageReader>

/// A picture that a user names, told by its content and as upright as its tag says. A drawing (SVG)
/// is read without the pictures of other files that it names, which would get into the film; a
/// compressed one can't be read, and neither can what is no regular file.
class PictureFile
{
public:
    explicit PictureFile(const QString &path);

    QImageReader &reader() { return m_reader; }
    bool isDrawing() const { return m_drawing.isOpen(); }

private:
    QBuffer m_drawing;
    QImageReader m_reader;
};
