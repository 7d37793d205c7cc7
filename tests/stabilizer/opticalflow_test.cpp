// SPDX-License-Identifier: MIT
#include "stabilizer/movedtexture.h"
#include "stabilizer/posrotstabilizer.h"

#include <opencv2/core.hpp>
#include <opencv2/video/tracking.hpp>

#include <QMetaType>
#include <QtTest>

#include <cstdint>
#include <vector>

namespace
{
using Points = std::vector<cv::Point2f>;

/** What the library is asked for; the values here are those of the program. */
struct FlowArguments
{
    int Window = 21;  ///< pixels on each side
    int MaxLevel = 3;
    int Iterations = 30;
    double Epsilon = 0.01;  ///< pixels
    int Flags = 0;
    double Threshold = 0.0001;
};

/** Two frames and the points of the first. */
struct Pair
{
    cv::Mat Previous;
    cv::Mat Next;
    Points Features;
};

/** Points that were found again, and where. */
struct Found
{
    Points From;
    Points To;
};

/** Each pixel up to @p level brighter or darker. */
cv::Mat Noisy(const cv::Mat& frame, int seed, double level)
{
    cv::RNG generator(static_cast<std::uint64_t>(seed));
    cv::Mat noise(frame.size(), CV_16S);
    generator.fill(noise, cv::RNG::UNIFORM, -level, level + 1.0);
    cv::Mat sum;
    cv::add(frame, noise, sum, cv::noArray(), CV_8U);
    return sum;
}

/**
 * A near shift with noise. The left is nearly flat, with too little in it to be followed, and two
 * points lie outside.
 */
Pair NearPair()
{
    const cv::Mat texture = Texture(320, 240);
    Pair pair{Noisy(Frame(texture, 0, 0), 1, 6.0), Noisy(Frame(texture, 5, -3), 2, 6.0), {}};
    const cv::Mat gray(240, 150, CV_8UC1, cv::Scalar(100));
    Noisy(gray, 3, 1.0).copyTo(pair.Previous.colRange(0, 150));
    Noisy(gray, 4, 1.0).copyTo(pair.Next.colRange(0, 150));
    pair.Features = Grid(pair.Previous, 8, 6);
    pair.Features.insert(pair.Features.begin() + 3, {-500.0F, 10.0F});
    pair.Features.emplace_back(1000.0F, 1000.0F);
    return pair;
}

/** A shift that a pyramid of level 3 cannot reach in a frame that has room for more levels. */
Pair FarPair()
{
    const cv::Mat texture = Texture(1280, 720);
    Pair pair{Frame(texture, 0, 0), Frame(texture, 140, -60), {}};
    pair.Features = Grid(pair.Previous, 8, 6);
    return pair;
}

/** Asks the library itself. */
Found Follow(const Pair& pair, const FlowArguments& arguments)
{
    Points to(pair.Features.size());  // zeros, which are no guess
    std::vector<uchar> status;
    std::vector<float> errors;
    const cv::TermCriteria criteria(cv::TermCriteria::COUNT + cv::TermCriteria::EPS,
                                    arguments.Iterations, arguments.Epsilon);
    cv::calcOpticalFlowPyrLK(pair.Previous, pair.Next, pair.Features, to, status, errors,
                             cv::Size(arguments.Window, arguments.Window), arguments.MaxLevel,
                             criteria, arguments.Flags, arguments.Threshold);
    Found found;
    for (std::size_t i = 0; i < status.size(); ++i)
    {
        if (status[i] != 0)
        {
            found.From.push_back(pair.Features[i]);
            found.To.push_back(to[i]);
        }
    }
    return found;
}

/** Shift, rotation and uniform scale, as the library gives them. */
cv::Mat Estimate(const Found& found)
{
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    return cv::estimateRigidTransform(found.From, found.To, false);
#pragma GCC diagnostic pop
}

bool IsEqual(const cv::Mat& one, const cv::Mat& other)
{
    return one.size() == other.size() && one.type() == other.type() &&
           cv::norm(one, other, cv::NORM_INF) == 0.0;
}
}  // namespace

Q_DECLARE_METATYPE(FlowArguments)

/** The step gives to the last bit what the library gives for the program's arguments. */
class OpticalFlowTest : public QObject
{
    Q_OBJECT

private slots:
    void Arguments_data();
    void Arguments();
};

void OpticalFlowTest::Arguments_data()
{
    QTest::addColumn<bool>("isFar");
    QTest::addColumn<FlowArguments>("other");
    const auto row = [](const char* name, bool isFar, const auto& change)
    {
        FlowArguments other;
        change(other);
        QTest::newRow(name) << isFar << other;
    };
    row("window", false, [](FlowArguments& other) { other.Window = 19; });
    row("fewer iterations", false, [](FlowArguments& other) { other.Iterations = 10; });
    row("more iterations", false, [](FlowArguments& other) { other.Iterations = 60; });
    row("coarse end", false, [](FlowArguments& other) { other.Epsilon = 0.03; });
    row("fine end", false, [](FlowArguments& other) { other.Epsilon = 0.003; });
    row("guess", false, [](FlowArguments& other) { other.Flags = cv::OPTFLOW_USE_INITIAL_FLOW; });
    row("any texture will do", false, [](FlowArguments& other) { other.Threshold = 0.0; });
    row("more texture", false, [](FlowArguments& other) { other.Threshold = 0.001; });
    row("lower pyramid", true, [](FlowArguments& other) { other.MaxLevel = 2; });
    row("pyramid of 4", true, [](FlowArguments& other) { other.MaxLevel = 4; });
    row("pyramid of 5", true, [](FlowArguments& other) { other.MaxLevel = 5; });
}

void OpticalFlowTest::Arguments()
{
    QFETCH(bool, isFar);
    QFETCH(FlowArguments, other);
    const Pair pair = isFar ? FarPair() : NearPair();
    const Found expected = Follow(pair, FlowArguments());
    QVERIFY(expected.From.size() > 4 && expected.From.size() < pair.Features.size());
    // The pair tells the arguments apart.
    const Found otherFound = Follow(pair, other);
    QVERIFY(otherFound.From != expected.From || otherFound.To != expected.To);

    PosRotStabilizer stabilizer;
    stabilizer.PrepareFrames(1);
    Points points = pair.Features;
    Points nextPoints(points.size());
    stabilizer.TrackFrame(pair.Previous, pair.Next, points, nextPoints);
    QVERIFY(points == expected.From);
    QVERIFY(nextPoints == expected.To);
    const cv::Mat estimate = Estimate(expected);
    QVERIFY(!estimate.empty());
    QVERIFY(IsEqual(stabilizer.Transform, estimate));
}

QTEST_APPLESS_MAIN(OpticalFlowTest)
#include "opticalflow_test.moc"
