// SPDX-License-Identifier: MIT
#include "samplevideo/canvas.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

Colour Mix(const Colour& first, const Colour& second, double share)
{
    return first + (second - first) * static_cast<float>(std::clamp(share, 0.0, 1.0));
}

double SmoothStep(double low, double high, double value)
{
    const double t = std::clamp((value - low) / (high - low), 0.0, 1.0);
    return t * t * (3.0 - 2.0 * t);
}

Outline Box(double left, double top, double right, double bottom)
{
    return {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
}

Outline Blob(cv::Point2d centre, cv::Point2d radius, double rough, int corners, Random& random)
{
    constexpr double fullTurn = 6.283185307179586;
    Outline outline;
    for (int i = 0; i < corners; ++i)
    {
        const Rotation turn = RotationOf(fullTurn * i / corners);
        const double size = 1.0 + random.Uniform(-rough, rough);
        outline.emplace_back(centre.x + size * radius.x * turn.Cos,
                             centre.y + size * radius.y * turn.Sin);
    }
    return outline;
}

cv::Rect Cover(const Canvas& canvas, const Outline& outline, cv::Mat& mask)
{
    cv::Point2d low = outline.front();
    cv::Point2d high = low;
    for (const cv::Point2d& corner : outline)
    {
        low = {std::min(low.x, corner.x), std::min(low.y, corner.y)};
        high = {std::max(high.x, corner.x), std::max(high.y, corner.y)};
    }
    constexpr int edge = 2;  // pixels that the smooth edge may add
    const cv::Point first(static_cast<int>(std::floor(low.x * canvas.Unit)) - edge,
                          static_cast<int>(std::floor(low.y * canvas.Unit)) - edge);
    const cv::Point last(static_cast<int>(std::ceil(high.x * canvas.Unit)) + edge,
                         static_cast<int>(std::ceil(high.y * canvas.Unit)) + edge);
    const cv::Rect area =
        (cv::Rect(first, last) - canvas.Origin) & cv::Rect({}, canvas.Picture.size());
    if (area.empty())
    {
        return {};
    }
    constexpr int shift = 4;  // fixed point bits below the pixel
    std::vector<cv::Point> corners;
    corners.reserve(outline.size());
    for (const cv::Point2d& corner : outline)
    {
        corners.emplace_back(
            cvRound((corner.x * canvas.Unit - canvas.Origin.x - area.x) * (1 << shift)),
            cvRound((corner.y * canvas.Unit - canvas.Origin.y - area.y) * (1 << shift)));
    }
    mask = cv::Mat::zeros(area.size(), CV_8UC1);
    cv::fillPoly(mask, std::vector<std::vector<cv::Point>>{corners}, cv::Scalar(255), cv::LINE_AA,
                 shift);
    return area;
}

void Fill(Canvas& canvas, const Outline& outline, double grain, const Colour& colour)
{
    Fill(canvas, outline, grain, [&colour](const cv::Point2d&) { return colour; });
}
