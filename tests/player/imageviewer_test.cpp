// SPDX-License-Identifier: MIT
#include "player/imageviewer.h"

#include "app/endguard.h"

#include <QMetaProperty>
#include <QScrollArea>
#include <QTest>

#include <memory>
#include <vector>

namespace
{
constexpr const char* DropText = "Viewer dropped frame!";

int Drops = 0;  ///< lines of the debug stream about dropped frames
QtMessageHandler Next = nullptr;

void CountDrops(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    Drops += type == QtDebugMsg && text == QLatin1String(DropText) ? 1 : 0;
    Next(type, context, text);
}

QImage Plain(Qt::GlobalColor colour, int width = 60, int height = 40,
             QImage::Format format = QImage::Format_RGB888)
{
    QImage image(width, height, format);
    image.fill(colour);
    return image;
}

/** Counts the paint events of a widget. */
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        Paints += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(object, event);
    }

    int Paints = 0;
};
}  // namespace

Q_DECLARE_METATYPE(QImage::Format)

class ImageViewerTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void MetaObject();
    void StartsEmpty();
    void EmptyViewerPaintsNothing();
    void PropertyWritesThroughTheSlot();
    void BitsAreItsOwn_data();
    void BitsAreItsOwn();
    void NextImageTakesOver_data();
    void NextImageTakesOver();
    void LikeImageKeepsTheMemory();
    void HandedOutCopyStays();
    void TakesTheSizeOfTheImage();
    void FittingSizeStaysFree();
    void KeepsItsSizeInAScrollArea();
    void PaintsAtTheOrigin();
    void PaintIsDeferred();
    void DroppedFrames_data();
    void DroppedFrames();
    void NullImageClears();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void ImageViewerTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Drops = 0;
    Next = qInstallMessageHandler(CountDrops);
}

void ImageViewerTest::cleanup()
{
    qInstallMessageHandler(Next);
    QCOMPARE(EndGuard(Guard), QStringList());
}

void ImageViewerTest::MetaObject()
{
    const QMetaObject& meta = ImageViewer::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
    QCOMPARE(meta.method(meta.methodOffset()).methodSignature(), QByteArray("setImage(QImage)"));
    QCOMPARE(meta.method(meta.methodOffset()).methodType(), QMetaMethod::Slot);
    QCOMPARE(meta.propertyCount() - meta.propertyOffset(), 1);
    const QMetaProperty image = meta.property(meta.propertyOffset());
    QCOMPARE(image.name(), "image");
    QCOMPARE(image.userType(), int(QMetaType::QImage));
    QVERIFY(image.isReadable() && image.isWritable());
}

void ImageViewerTest::StartsEmpty()
{
    ImageViewer viewer;
    QVERIFY(viewer.property("image").value<QImage>().isNull());
    QVERIFY(viewer.parentWidget() == nullptr);
}

void ImageViewerTest::EmptyViewerPaintsNothing()
{
    ImageViewer viewer;
    viewer.resize(20, 20);
    QPalette palette;
    palette.setColor(QPalette::Window, Qt::red);
    viewer.setPalette(palette);
    QCOMPARE(viewer.grab().toImage().pixelColor(10, 10), QColor(Qt::red));
    QVERIFY(!viewer.testAttribute(Qt::WA_OpaquePaintEvent));
}

void ImageViewerTest::PropertyWritesThroughTheSlot()
{
    ImageViewer viewer;
    QVERIFY(viewer.setProperty("image", Plain(Qt::green)));
    QCOMPARE(viewer.property("image").value<QImage>(), Plain(Qt::green));
    QCOMPARE(viewer.size(), QSize(60, 40));
}

void ImageViewerTest::BitsAreItsOwn_data()
{
    QTest::addColumn<int>("images");
    QTest::newRow("the first image") << 1;
    QTest::newRow("the second of the same kind") << 2;
}

void ImageViewerTest::BitsAreItsOwn()
{
    QFETCH(int, images);
    ImageViewer viewer;
    std::vector<uchar> bits(std::size_t(60) * 40 * 3, 10);
    for (int i = 0; i < images; ++i)
    {
        std::fill(bits.begin(), bits.end(), uchar(20 + i));
        viewer.setImage(QImage(bits.data(), 60, 40, 180, QImage::Format_RGB888));
    }
    std::fill(bits.begin(), bits.end(), uchar(99));
    QImage expected = Plain(Qt::black);
    expected.fill(QColor(19 + images, 19 + images, 19 + images));
    QCOMPARE(viewer.GetImage(), expected);
}

void ImageViewerTest::NextImageTakesOver_data()
{
    QTest::addColumn<QImage>("next");
    QTest::newRow("of the same kind") << Plain(Qt::blue);
    QTest::newRow("of another size") << Plain(Qt::blue, 40, 60);
    QTest::newRow("smaller") << Plain(Qt::blue, 20, 10);
    QTest::newRow("of another format with as many bytes")
        << Plain(Qt::blue, 60, 40, QImage::Format_BGR888);
    QTest::newRow("of another format with more bytes")
        << Plain(Qt::blue, 60, 40, QImage::Format_RGB32);
    static std::vector<uchar> wide(std::size_t(200) * 40, 77);
    QTest::newRow("with longer lines") << QImage(wide.data(), 60, 40, 200, QImage::Format_RGB888);
}

void ImageViewerTest::NextImageTakesOver()
{
    QFETCH(QImage, next);
    ImageViewer viewer;
    viewer.setImage(Plain(Qt::green));
    viewer.setImage(next);
    QCOMPARE(viewer.GetImage(), next);
    QCOMPARE(viewer.GetImage().format(), next.format());
    QCOMPARE(viewer.size(), next.size());
    QVERIFY(viewer.GetImage().constBits() != next.constBits());
}

/** The bits of each frame are copied into the same place: play allocates nothing. */
void ImageViewerTest::LikeImageKeepsTheMemory()
{
    ImageViewer viewer;
    viewer.setImage(Plain(Qt::green));
    const uchar* const before = viewer.GetImage().constBits();
    viewer.setImage(Plain(Qt::blue));
    QCOMPARE(viewer.GetImage().constBits(), before);
}

void ImageViewerTest::HandedOutCopyStays()
{
    ImageViewer viewer;
    viewer.setImage(Plain(Qt::green));
    const QImage taken = viewer.GetImage();
    viewer.setImage(Plain(Qt::blue));
    QCOMPARE(taken, Plain(Qt::green));
    QCOMPARE(viewer.GetImage(), Plain(Qt::blue));
}

void ImageViewerTest::TakesTheSizeOfTheImage()
{
    ImageViewer viewer;
    viewer.setImage(Plain(Qt::green, 60, 40));
    QCOMPARE(viewer.minimumSize(), QSize(60, 40));
    QCOMPARE(viewer.maximumSize(), QSize(60, 40));
    viewer.setImage(Plain(Qt::green, 30, 50));
    QCOMPARE(viewer.minimumSize(), QSize(30, 50));
    QCOMPARE(viewer.maximumSize(), QSize(30, 50));
    QCOMPARE(viewer.size(), QSize(30, 50));
}

void ImageViewerTest::FittingSizeStaysFree()
{
    ImageViewer viewer;
    viewer.resize(60, 40);
    viewer.setImage(Plain(Qt::green, 60, 40));
    QCOMPARE(viewer.maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
}

void ImageViewerTest::KeepsItsSizeInAScrollArea()
{
    QScrollArea area;
    area.setWidgetResizable(true);
    auto* viewer = new ImageViewer;
    area.setWidget(viewer);
    area.resize(300, 200);
    area.show();
    QVERIFY(QTest::qWaitForWindowExposed(&area));
    viewer->setImage(Plain(Qt::green));
    QCoreApplication::processEvents();
    QCOMPARE(viewer->size(), QSize(60, 40));
    area.resize(400, 300);
    QCoreApplication::processEvents();
    QCOMPARE(viewer->size(), QSize(60, 40));
}

void ImageViewerTest::PaintsAtTheOrigin()
{
    ImageViewer viewer;
    QImage image = Plain(Qt::green);
    image.setPixelColor(0, 0, Qt::red);
    image.setPixelColor(59, 39, Qt::blue);
    viewer.setImage(image);
    QVERIFY(!viewer.testAttribute(Qt::WA_OpaquePaintEvent));
    QCOMPARE(viewer.grab().toImage().convertToFormat(QImage::Format_RGB888), image);
    QVERIFY(viewer.testAttribute(Qt::WA_OpaquePaintEvent));
    viewer.setFixedSize(90, 80);  // not scaled, not centred
    const QImage shown = viewer.grab().toImage();
    QCOMPARE(shown.copy(0, 0, 60, 40).convertToFormat(QImage::Format_RGB888), image);
}

void ImageViewerTest::PaintIsDeferred()
{
    ImageViewer viewer;
    viewer.setImage(Plain(Qt::green));
    viewer.show();
    QVERIFY(QTest::qWaitForWindowExposed(&viewer));
    QCoreApplication::processEvents();
    PaintCounter counter(viewer);
    viewer.setImage(Plain(Qt::blue));
    QCOMPARE(counter.Paints, 0);
    QTRY_COMPARE(counter.Paints, 1);
}

void ImageViewerTest::DroppedFrames_data()
{
    QTest::addColumn<QString>("steps");  // s sets an image, p paints
    QTest::addColumn<int>("drops");
    QTest::newRow("the first image drops none") << "s" << 0;
    QTest::newRow("a painted image is no drop") << "spsps" << 0;
    QTest::newRow("a second image before the paint") << "ss" << 1;
    QTest::newRow("each of several before the paint") << "ssss" << 3;
    QTest::newRow("counts anew after a paint") << "sspss" << 2;
}

void ImageViewerTest::DroppedFrames()
{
    QFETCH(QString, steps);
    QFETCH(int, drops);
    ImageViewer viewer;
    const Qt::GlobalColor colours[] = {Qt::green, Qt::blue};
    for (int i = 0; i < steps.size(); ++i)
    {
        if (steps.at(i) == QLatin1Char('s'))
        {
            viewer.setImage(Plain(colours[i % 2]));
        }
        else
        {
            static_cast<void>(viewer.grab());
        }
    }
    QCOMPARE(Drops, drops);
}

void ImageViewerTest::NullImageClears()
{
    ImageViewer viewer;
    viewer.setImage(Plain(Qt::green));
    static_cast<void>(viewer.grab());
    viewer.setImage(QImage());
    QVERIFY(viewer.GetImage().isNull());
    viewer.setImage(Plain(Qt::green));
    QCOMPARE(viewer.GetImage(), Plain(Qt::green));
    QCOMPARE(Drops, 1);  // nothing is painted of a null image
}

QTEST_MAIN(ImageViewerTest)
#include "imageviewer_test.moc"
