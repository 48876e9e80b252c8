// SPDX-License-Identifier: MIT
#pragma once

#include <QMargins>
#include <QMetaType>
#include <QWidget>

Q_DECLARE_METATYPE(QMargins)

/// The numbers under a slider, evenly spaced between the margins.
class Ruler : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(int maximum READ maximum WRITE setMaximum)
    Q_PROPERTY(int minimum READ minimum WRITE setMinimum)
    Q_PROPERTY(int step READ step WRITE setStep)
    Q_PROPERTY(QString suffix READ suffix WRITE setSuffix)
    Q_PROPERTY(QMargins ruleMargins READ ruleMargins WRITE setRuleMargins)
    Q_PROPERTY(Qt::Alignment alignment READ alignment WRITE setAlignment)

public:
    explicit Ruler(QWidget *parent = nullptr);

    int maximum() const { return m_maximum; }
    void setMaximum(int maximum);
    int minimum() const { return m_minimum; }
    void setMinimum(int minimum);
    /// Not 0.
    int step() const { return m_step; }
    void setStep(int step);
    QString suffix() const { return m_suffix; }
    void setSuffix(const QString &suffix);
    QMargins ruleMargins() const { return m_ruleMargins; }
    void setRuleMargins(const QMargins &margins);
    /// How a number stands to its place; horizontally centred at first.
    Qt::Alignment alignment() const { return m_alignment; }
    void setAlignment(Qt::Alignment alignment);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int m_maximum = 0;
    int m_minimum = 0;
    int m_step = 1;
    QString m_suffix;
    QMargins m_ruleMargins = QMargins(16, 0, 16, 0);
    Qt::Alignment m_alignment = Qt::AlignHCenter;
};
