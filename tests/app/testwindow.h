// SPDX-License-Identifier: MIT
#pragma once

#include "app/mainwindow.h"
#include "support/freshhost.h"

#include <QString>
#include <QStringList>

#include <memory>

/** The program's window in its designed size, with a stabilizer host that knows no other window. */
class TestWindow
{
public:
    /** @param projectFile  as on the command line */
    explicit TestWindow(const QString& projectFile = QString());

    /** Ends the window; stabilizer and thread stay for as long as this object. */
    void End() { Window.reset(); }

    [[nodiscard]] MainWindow* operator->() const { return Window.get(); }

    /** What the settings tab, or else the rest of the window, has of that name. */
    template <typename Object>
    [[nodiscard]] Object* Find(const char* name) const
    {
        const QString objectName = QString::fromLatin1(name);
        auto* object = SettingsTab()->findChild<Object*>(objectName);
        object = object != nullptr ? object : Window->findChild<Object*>(objectName);
        if (object == nullptr)
        {
            qFatal("the window has no %s", name);
        }
        return object;
    }

    void Click(const char* button) const;  ///< must be enabled; a click on others does nothing
    void ClickTab(int index) const;        ///< on the tab bar
    void SetNumber(const char* field, double value) const;  ///< of either kind of spin box
    void SetChecked(const char* box, bool isChecked) const;
    void SetText(const char* lineEdit, const QString& text) const;
    [[nodiscard]] QString Text(const char* lineEdit) const;
    [[nodiscard]] double Number(const char* field) const;
    [[nodiscard]] bool IsChecked(const char* box) const;
    [[nodiscard]] bool IsEnabled(const char* widget) const;

    /** Has the form's values taken into the project the short way: no job, no video. */
    void Commit() const;

    /** Fills the four path fields: @p video as source, data files and export in @p directory. */
    void SetPaths(const QString& video, const QString& directory) const;

    [[nodiscard]] QString Word() const;        ///< first word of the title
    [[nodiscard]] QString LastAction() const;  ///< last message of any level
    [[nodiscard]] QStringList Log() const;     ///< lines of the text area, with their prefixes

private:
    [[nodiscard]] QWidget* SettingsTab() const;

    FreshHost Host;  // outlives the window
    std::unique_ptr<MainWindow> Window;
};
