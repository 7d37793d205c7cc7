// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QString>

class QWidget;
class Report;

/**
 * Works the player tab of the main window by mouse and keys. The window must be shown, with a
 * source and a calculated path.
 */
class PlayerWalk
{
public:
    /** @param window  main window, outlives the object. @param out  existing directory */
    PlayerWalk(QWidget& window, const QDir& out, Report& report);

    void ShowFrame(int frame, double zoom);  ///< at rest
    void Seek();                             ///< by slider, frame number and time
    void ShowViews();  ///< zoom, crop, path and margin; a picture of each view
    void PlayAndPause();
    void PlayToTheEnd();
    void StartJobDuringPlay();  ///< reads the analysed data; the play stops

private:
    template <typename Widget>
    Widget* Find(const char* name) const;
    void EnterTab();
    void Tick(const char* checkBox);
    void SetNumber(const char* spinBox, double value);
    void PressPlay();
    [[nodiscard]] bool IsPlaying() const;
    [[nodiscard]] int Frame() const;
    void CheckFrame(int frame, const QString& how);
    void TakePicture(const QString& name);

    QWidget& Window;
    QDir Out;
    Report& Story;
    QWidget* Page = nullptr;  ///< the player tab
};
