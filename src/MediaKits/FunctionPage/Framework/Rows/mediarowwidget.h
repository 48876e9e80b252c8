// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/AppInstance/LocalStore/mediafunction.h"
#include "MediaKits/FunctionPage/Framework/Rows/rowcontent.h"
#include "MediaKits/FunctionPage/Framework/Rows/rowitem.h"
#include "MediaKits/MediaTasksManager/mediatask.h"

#include <QVariantMap>
#include <QWidget>

#include <functional>

class MediaInfoBase;
class RowForm;

/// Base of the rows that show one file. Path and probe result are data of the row's item; what the
/// row shows is a `RowContent`, and the widgets that show it exist only while the row is in sight,
/// so that a list may have a thousand rows.
class MediaRowWidget : public QWidget
{
    Q_OBJECT

public:
    /// @param item holds the path already
    MediaRowWidget(const RowItem &item, QWidget *parent);

    QString sourcePath() const;
    /// Null until probed.
    QSharedPointer<MediaInfoData> sourceInfo() const;
    const RowItem &item() const { return m_item; }
    /// Forgets the item, ahead of its deletion.
    void clearItem() { m_item.clear(); }

    /// Makes the row's widgets when it comes in sight, and lets go of them when it is out of it,
    /// unless a name is being typed there. Tells whether widgets were made.
    bool setInSight(bool inSight);
    const RowContent &content() const { return m_content; }
    /// Lets the focus come here after the row above, wherever this one was made in between.
    void tabAfter(MediaRowWidget *above);
    /// A picture of the source, of the row's size.
    void setPicture(const QPixmap &picture);

    /// What the preview window is told along with a finished file.
    /// @param mode "手动" or "自动"
    static QVariantMap previewInfo(MediaFunction function, const QString &mode);

signals:
    void pictureTaken(const QPixmap &picture);

public slots:
    virtual void on_btnDel_clicked() = 0;
    void on_btnPlaySrc_clicked();

protected:
    /// Makes the row's widgets and connects them.
    virtual RowForm *createForm() = 0;
    /// Starts the probe of the source and, once that is known, asks for its picture, where the item
    /// has neither; for the subclass's constructor.
    void probeSource();
    /// Asks for a picture of the source, which `setPicture` gets.
    /// @param atMs of the source's time
    void requestPicture(int atMs);
    /// Takes what the item already has of both.
    void adoptKnown();
    /// The task that has to be told of the source before it begins, null for none.
    virtual MediaTask *usingTask() const { return nullptr; }
    /// The source turned out to be none that can be used.
    virtual void missSource() {}
    /// Whether the source may be taken as its probe found it.
    virtual bool acceptsSource(const MediaInfoBase &) { return true; }
    /// Puts what the probe of the source has found where the task looks for it.
    virtual void keepSource(const QSharedPointer<MediaInfoData> &info) = 0;
    /// Takes what the probe of the source has found, beyond its length and size.
    virtual void onSourceProbed(const MediaInfoData &info) = 0;
    void probe(const QString &path, const std::function<void(const MediaInfoData &)> &take);

    QString sourceSuffix() const;
    /// Changes one of the things that are shown.
    template<class Value, class Given>
    void setShown(Value RowContent::*what, const Given &value)
    {
        change([&](RowContent &content) { content.*what = value; });
    }
    /// Changes what is shown, several things at once.
    void change(const std::function<void(RowContent &)> &changes);
    void showOperate(MediaTask::Operate operate);
    /// Its turn has come.
    void showBegun();
    void showProgress(double progress);

    bool event(QEvent *event) override;

    static constexpr int noProgress = -1;

private:
    MediaInfoBase *createReader(const QString &path);
    void makeForm();
    QVector<QWidget *> tabStops();
    void tabIntoForm();
    void showSource(const MediaInfoData &info);
    bool hasPicture() const;
    void requestFirstPicture();
    void showPicture();
    void setHovered(bool hovered);

    RowItem m_item;
    RowContent m_content;
    RowForm *m_form = nullptr;
};
