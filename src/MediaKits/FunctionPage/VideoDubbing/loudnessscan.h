// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QObject>
#include <QStringList>

#include <memory>
#include <optional>

class LoudnessProcessor;

/// Measures how loud files are, in the background, one after the other.
class LoudnessScan : public QObject
{
    Q_OBJECT

public:
    explicit LoudnessScan(QObject *parent = nullptr);
    ~LoudnessScan() override;

    /// Lets a file be measured, once.
    void want(const QString &file);
    bool isKnown(const QString &file) const { return m_known.contains(file); }
    /// In LUFS; nothing for a file without sound and for one that isn't known yet.
    std::optional<double> loudness(const QString &file) const { return m_known.value(file); }

signals:
    /// A file has become known.
    void measured();

private:
    void measureNext();

    QHash<QString, std::optional<double>> m_known;
    QStringList m_waiting;
    std::unique_ptr<LoudnessProcessor> m_runner;
};
