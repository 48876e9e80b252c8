// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QVariantList>

#include <exception>

/// A graph that isn't made of maps.
class FFmpegFilterGraphException : public std::exception
{
public:
    explicit FFmpegFilterGraphException(const QString &message)
        : m_message(message), m_utf8(message.toUtf8())
    {
    }

    QString message() const { return m_message; }
    const char *what() const noexcept override { return m_utf8.constData(); }

private:
    QString m_message;
    QByteArray m_utf8;
};

/// An ffmpeg filter graph, built as data and printed at the end. A filter is a map: "__filter" is
/// its name, "__inputs" and "__outputs" are labels around it, "value" is its whole argument text,
/// and without that every other key is an option.
class FilterGraph
{
public:
    /// @param labelPrefix in front of the number of each label
    explicit FilterGraph(const QString &labelPrefix);

    /// A label that this graph has not given out before.
    QString nextLabel();

    /// @param filters filter maps in order
    /// @param inputs labels in front of the chain
    /// @param outputs labels behind it
    void addChain(const QVariantList &filters, const QStringList &inputs,
                  const QStringList &outputs);

    /// The graph as the text of "-filter_complex"; empty without chains.
    /// @throws FFmpegFilterGraphException when a chain or a filter isn't a map
    QString toString() const;

    /// One filter with its labels as text.
    static QString filterText(const QVariantMap &filter);

    /// A filter whose argument text is `value`.
    static QVariantMap filter(const QString &name, const QString &value);
    /// A filter with options; labels are given as "__inputs" and "__outputs" among them.
    static QVariantMap filter(const QString &name, QVariantMap options = {});

private:
    int m_nextIndex = 0;
    QString m_labelPrefix;
    QVariantList m_chains;
};
