// SPDX-License-Identifier: MIT
#pragma once

#include "app/log.h"

#include <QString>
#include <QStringList>
#include <QWidget>

#include <memory>

/** A log of its own on a shown window. */
class ShownLog
{
public:
    ShownLog();

    void Add(unsigned level, const QString& text) { Messages.Add(level, text); }

    /** As when the program makes another window. */
    void ReplaceWindow();

    template <typename Widget>
    [[nodiscard]] Widget* Find(const char* name) const
    {
        auto* widget = Window->findChild<Widget*>(QString::fromLatin1(name));
        if (widget == nullptr)
        {
            qFatal("the log has no %s", name);
        }
        return widget;
    }

    [[nodiscard]] QString Text() const;        ///< of the text area
    [[nodiscard]] QStringList Lines() const;   ///< of the text area; none when it is empty
    [[nodiscard]] QString LastAction() const;  ///< of the label

    /** Clicks a check box where it takes clicks, which a wide one does not do everywhere. */
    void ClickBox(const char* name) const;

    std::unique_ptr<QWidget> Window;  ///< parent of the log's widgets

private:
    Log Messages;
};
