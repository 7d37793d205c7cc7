// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QUrl>

class QWidget;

/**
 * The story of a window's construction, line by line: what each step does to widgets, files and
 * the process-wide objects. Make it before the window; it looks at every event that passes. What
 * leaves no event of its own stands before the next event; of several such facts between two events
 * the log comes first, then files and worker, then the form.
 */
class StartTrace : public QObject
{
    Q_OBJECT

public:
    StartTrace();
    ~StartTrace() override;
    StartTrace(const StartTrace&) = delete;
    StartTrace& operator=(const StartTrace&) = delete;

    /** All lines so far, oldest first. */
    QStringList Story();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Notice();
    void NoticeLog();
    void NoticeFiles();
    void NoticeForm();
    void SeeTitle(const QObject& watched);
    void SeeMenu(const QObject& watched, const QEvent& event);
    void TellOnce(const QString& line);

    QStringList Lines;
    QSet<QString> Told;               ///< lines that come only once
    const QWidget* Window = nullptr;  ///< the main window, from its first event on
    bool IsNoticing = false;          ///< looking around must not look at itself
    int LogLines = 0;                 ///< of the window's log, told so far
    QByteArray Configuration;         ///< content of the file
    QList<QUrl> Sidebar;              ///< as told last
};
