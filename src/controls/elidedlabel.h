// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

/// A label of one plain text that is shortened in its middle to the label's width.
class ElidedLabel : public QLabel
{
    Q_OBJECT
    Q_PROPERTY(QString fullText READ fullText WRITE setFullText)
    Q_PROPERTY(bool autoToolTips READ autoToolTips WRITE setAutoToolTips)

public:
    explicit ElidedLabel(QWidget *parent = nullptr);

    QString fullText() const { return m_fullText; }
    void setFullText(const QString &text);

    /// Whether a new text also becomes the tool tip. True at first.
    bool autoToolTips() const { return m_autoToolTips; }
    void setAutoToolTips(bool enable) { m_autoToolTips = enable; }

    /// Room for the whole text; the minimum leaves room for the ellipsis alone.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void elide();
    QSize hintFor(const QString &text) const;

    QString m_fullText;
    bool m_autoToolTips = true;
};
