// SPDX-License-Identifier: MIT
#include "app/windowtest.h"
#include "support/testhome.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTabBar>
#include <QTest>

#include <memory>

namespace
{
const TestHome Home;

/** The way of the tab key over the first tab: left column, then right, line by line. */
const QStringList EyeOrder = {"comboBoxWarpType",
                              "spinBoxMaxTrackingPoints",
                              "checkBoxEnableZoom",
                              "doubleSpinBoxZoom",
                              "doubleSpinBoxExpRot",
                              "spinBoxExpOffsetH",
                              "spinBoxExpOffsetV",
                              "checkBoxRescale",
                              "spinBoxRescaleXAxis",
                              "spinBoxRescaleYAxis",
                              "lineEditSourceVideo",
                              "pushButtonSourceVideo",
                              "lineEditTrackingPathFile",
                              "pushButtonTrackingFile",
                              "lineEditStabilizeFile",
                              "pushButtonStabilizeFile",
                              "lineEditExportVideo",
                              "pushButtonExportVideoFile",
                              "pushButtonAbort",
                              "pushButtonGenerateAll",
                              "pushButtonAnalyseTrack",
                              "pushButtonReadTrack",
                              "pushButtonCalculateTrack",
                              "pushButtonExportVideo",
                              "plainTextEdit",
                              "checkBoxInit",
                              "checkBoxRunning",
                              "checkBoxWarnings",
                              "checkBoxErrors",
                              "pushButtonClear"};
}  // namespace

/** The first tab as the user sees, hears and walks it. */
class LayoutTest : public WindowTest
{
    Q_OBJECT

private slots:
    void Columns();
    void JobButtonsStandInOrder();
    void ExportIsAGrid();
    void GlobalSettingsAreAStack();
    void FileFieldsStandInLines();
    void LabelsHaveTheirInput_data();
    void LabelsHaveTheirInput();
    void EveryInputHasAName();
    void EveryInputHasAToolTip();
    void TabKeyFollowsTheEye();
    void NothingIsCutOff();
    void NothingStandsOutside();
    void LogFillsItsGroup();

private:
    [[nodiscard]] QRect Place(const QWidget* widget) const
    {
        return {widget->mapTo(Window->operator->(), QPoint(0, 0)), widget->size()};
    }
    [[nodiscard]] QRect Place(const char* name) const { return Place(Window->Find<QWidget>(name)); }
    [[nodiscard]] QLabel* LabelWith(const QString& text) const;
    void StandInLine(const std::vector<QRect>& places) const;
};

QLabel* LayoutTest::LabelWith(const QString& text) const
{
    for (QLabel* label : (*Window)->findChildren<QLabel*>())
    {
        if (label->text() == text)
        {
            return label;
        }
    }
    return nullptr;
}

/** From left to right on one line, without touching. */
void LayoutTest::StandInLine(const std::vector<QRect>& places) const
{
    for (std::size_t i = 1; i < places.size(); ++i)
    {
        QVERIFY(places[i].left() > places[i - 1].right());
        QVERIFY(std::abs(places[i].center().y() - places[i - 1].center().y()) <= 2);
    }
}

void LayoutTest::Columns()
{
    const QRect stabilize = Place("groupBox");
    const QRect exporting = Place("groupBoxExport");
    const QRect files = Place("groupBoxGeneral");
    const QRect generate = Place("groupBox_2");
    const QRect log = Place("groupBoxLog");
    QVERIFY(stabilize.bottom() < exporting.top());
    QVERIFY(exporting.bottom() < files.top());
    QVERIFY(generate.bottom() < log.top());
    for (const QRect& left : {stabilize, exporting, files})
    {
        QVERIFY(left.right() < generate.left());
        QVERIFY(left.right() < log.left());
    }
}

void LayoutTest::JobButtonsStandInOrder()
{
    int bottom = -1;
    for (const char* name :
         {"pushButtonAbort", "pushButtonGenerateAll", "pushButtonAnalyseTrack",
          "pushButtonReadTrack", "pushButtonCalculateTrack", "pushButtonExportVideo"})
    {
        QVERIFY2(Place(name).top() > bottom, name);
        QVERIFY2(Place("groupBox_2").contains(Place(name)), name);
        bottom = Place(name).bottom();
    }
}

void LayoutTest::ExportIsAGrid()
{
    const auto label = [this](const char* text)
    { return Place(LabelWith(QString::fromLatin1(text))); };
    const std::vector<std::vector<QRect>> rows = {
        {Place("checkBoxEnableZoom"), Place("doubleSpinBoxZoom"), label("Rotation in Deg."),
         Place("doubleSpinBoxExpRot")},
        {label("      Crop Offset H:"), Place("spinBoxExpOffsetH"), label("Crop Offset V:"),
         Place("spinBoxExpOffsetV")},
        {Place("checkBoxRescale"), Place("spinBoxRescaleXAxis"), label("Pixels and V:"),
         Place("spinBoxRescaleYAxis")}};
    for (std::size_t row = 0; row < rows.size(); ++row)
    {
        StandInLine(rows[row]);
        for (std::size_t column = 0; row > 0 && column < rows[row].size(); ++column)
        {
            QVERIFY(rows[row][column].top() > rows[row - 1][column].bottom());
        }
    }
    QCOMPARE(rows[0][1].left(), rows[1][1].left());
    QCOMPARE(rows[0][1].left(), rows[2][1].left());
    QCOMPARE(rows[0][3].left(), rows[1][3].left());
    QCOMPARE(rows[0][3].left(), rows[2][3].left());
}

void LayoutTest::GlobalSettingsAreAStack()
{
    const std::vector<QRect> places = {Place(LabelWith(QStringLiteral("Warp Type"))),
                                       Place("comboBoxWarpType"),
                                       Place(LabelWith(QStringLiteral("Max. Tracking Points"))),
                                       Place("spinBoxMaxTrackingPoints")};
    for (std::size_t i = 1; i < places.size(); ++i)
    {
        QVERIFY(places[i].top() > places[i - 1].bottom());
    }
}

void LayoutTest::FileFieldsStandInLines()
{
    const QVector<QVector<const char*>> rows = {
        {"Source Video File", "lineEditSourceVideo", "pushButtonSourceVideo"},
        {"Tracking Path File", "lineEditTrackingPathFile", "pushButtonTrackingFile"},
        {"Stabilize File", "lineEditStabilizeFile", "pushButtonStabilizeFile"},
        {"Export Video File", "lineEditExportVideo", "pushButtonExportVideoFile"}};
    int bottom = -1;
    for (const QVector<const char*>& row : rows)
    {
        StandInLine({Place(LabelWith(QString::fromLatin1(row[0]))), Place(row[1]), Place(row[2])});
        QVERIFY2(Place(row[1]).top() > bottom, row[1]);
        bottom = Place(row[1]).bottom();
    }
}

void LayoutTest::LabelsHaveTheirInput_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("input");
    const auto add = [](const char* text, const char* input)
    { QTest::newRow(text) << QString::fromLatin1(text) << QString::fromLatin1(input); };
    add("Warp Type", "comboBoxWarpType");
    add("Max. Tracking Points", "spinBoxMaxTrackingPoints");
    add("Rotation in Deg.", "doubleSpinBoxExpRot");
    add("      Crop Offset H:", "spinBoxExpOffsetH");
    add("Crop Offset V:", "spinBoxExpOffsetV");
    add("Pixels and V:", "spinBoxRescaleYAxis");
    add("Source Video File", "lineEditSourceVideo");
    add("Tracking Path File", "lineEditTrackingPathFile");
    add("Stabilize File", "lineEditStabilizeFile");
    add("Export Video File", "lineEditExportVideo");
}

void LayoutTest::LabelsHaveTheirInput()
{
    QFETCH(QString, text);
    QFETCH(QString, input);
    const QLabel* label = LabelWith(text);
    QVERIFY(label != nullptr && label->isVisible());
    QVERIFY(label->buddy() != nullptr);
    QCOMPARE(label->buddy()->objectName(), input);
}

void LayoutTest::EveryInputHasAName()
{
    QSet<QString> labelled;
    for (const QLabel* label : (*Window)->findChildren<QLabel*>())
    {
        if (label->buddy() != nullptr)
        {
            labelled.insert(label->buddy()->objectName());
        }
    }
    for (const QString& name : EyeOrder)
    {
        const auto* input = Window->Find<QWidget>(qPrintable(name));
        const auto* button = qobject_cast<const QAbstractButton*>(input);
        const bool hasOwnText = button != nullptr && button->text() != QLatin1String("Choose");
        QVERIFY2(hasOwnText || labelled.contains(name) || !input->accessibleName().isEmpty(),
                 qPrintable(name));
    }
}

void LayoutTest::EveryInputHasAToolTip()
{
    for (const QString& name : EyeOrder)
    {
        QVERIFY2(!Window->Find<QWidget>(qPrintable(name))->toolTip().isEmpty(), qPrintable(name));
    }
}

void LayoutTest::TabKeyFollowsTheEye()
{
    QStringList found;
    QWidget* start = Window->operator->();
    const QWidget* settings = Window->Find<QTabWidget>("tabWidgetMain")->widget(0);
    for (QWidget* next = start->nextInFocusChain(); next != start; next = next->nextInFocusChain())
    {
        const bool isHere = settings->isAncestorOf(next);
        if (isHere && EyeOrder.contains(next->objectName()))
        {
            found.append(next->objectName());
        }
    }
    QCOMPARE(found, EyeOrder);
    for (const QString& name : EyeOrder)
    {
        const auto* input = Window->Find<QWidget>(qPrintable(name));
        QVERIFY2((input->focusPolicy() & Qt::TabFocus) != 0, qPrintable(name));
    }
}

void LayoutTest::NothingIsCutOff()
{
    QCOMPARE((*Window)->size(), QSize(1018, 755));
    int seen = 0;
    for (const QWidget* widget : Window->Find<QWidget>("Settings")->findChildren<QWidget*>())
    {
        const bool hasText = qobject_cast<const QLabel*>(widget) != nullptr ||
                             qobject_cast<const QAbstractButton*>(widget) != nullptr ||
                             qobject_cast<const QAbstractSpinBox*>(widget) != nullptr;
        if (hasText && widget->isVisible())
        {
            ++seen;
            const QSize wanted = widget->sizeHint();
            QVERIFY2(widget->width() >= wanted.width() && widget->height() >= wanted.height(),
                     qPrintable(QStringLiteral("%1 is %2 by %3 and wants %4 by %5")
                                    .arg(widget->objectName())
                                    .arg(widget->width())
                                    .arg(widget->height())
                                    .arg(wanted.width())
                                    .arg(wanted.height())));
        }
    }
    QVERIFY2(seen >= 35, "labels, buttons, boxes and number fields");
}

void LayoutTest::NothingStandsOutside()
{
    const QRect window = (*Window)->rect();
    for (const QWidget* widget : Window->Find<QWidget>("Settings")->findChildren<QWidget*>())
    {
        if (widget->isVisible())
        {
            QVERIFY2(window.contains(Place(widget)), qPrintable(widget->objectName()));
            QVERIFY2(widget->parentWidget()->rect().contains(widget->geometry()),
                     qPrintable(widget->objectName()));
        }
    }
}

void LayoutTest::LogFillsItsGroup()
{
    const QRect group = Place("groupBoxLog");
    QVERIFY(group.contains(Place("plainTextEdit")));
    QVERIFY(Place("plainTextEdit").height() >= 100);
    QVERIFY(group.contains(Place("pushButtonClear")));
    // A window made taller gives its height to the messages.
    const int before = Place("plainTextEdit").height();
    (*Window)->resize(1018, 955);
    QTRY_COMPARE(Place("plainTextEdit").height(), before + 200);
}

QTEST_MAIN(LayoutTest)
#include "layout_test.moc"
