// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

class OpCVThread;
class QLabel;
class QPlainTextEdit;
class QWidget;

/**
 * The log's widgets on a window of their own, and every message since, in order.
 *
 * A message is kept as its level and its text, as in "3 Out of date!", so that a test compares
 * string lists. Messages of the levels 0 to 3 are seen as soon as they are added. Those of higher
 * levels, which show in the label only, need Attach. User interface thread only.
 */
class LogLines : public QObject
{
public:
    LogLines();
    ~LogLines() override;

    /** Sees also the messages of @p thread that the text area does not show. Once per thread. */
    void Attach(const OpCVThread* thread);

    [[nodiscard]] QStringList All() const { return Lines; }
    QStringList Take();                                  ///< all, and forgets them
    [[nodiscard]] QStringList OfLevel(int level) const;  ///< those of one level
    [[nodiscard]] bool Has(const QString& line) const { return Lines.contains(line); }

private:
    void SeeTextArea();
    void SeeLabel();

    std::unique_ptr<QWidget> Window;  ///< parent of the log's widgets
    QPlainTextEdit* TextArea;         ///< of the window
    QLabel* LastAction;               ///< of the window
    QStringList Lines;                ///< oldest first
    bool TextAreaGrew = false;        ///< since the last message of an attached thread
};
