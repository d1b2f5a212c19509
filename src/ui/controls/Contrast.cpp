#include "ui/controls/Contrast.h"

#include <algorithm>
#include <cmath>

namespace tarnwik {

namespace {

double linear(double channel)
{
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

} // namespace

QColor Contrast::over(const QColor &top, const QColor &bottom)
{
    const auto alpha = top.alphaF();
    const auto mixed = [alpha](float above, float below) { return alpha * above + (1 - alpha) * below; };
    return QColor::fromRgbF(mixed(top.redF(), bottom.redF()), mixed(top.greenF(), bottom.greenF()),
                            mixed(top.blueF(), bottom.blueF()));
}

double Contrast::ratio(const QColor &foreground, const QColor &background)
{
    const auto one = luminance(over(foreground, background));
    const auto other = luminance(background);
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

QColor Contrast::readable(const QColor &color, const QColor &background, double atLeast)
{
    const auto isLightBetter = ratio(Qt::white, background) >= ratio(Qt::black, background);
    auto end = QColor(isLightBetter ? Qt::white : Qt::black);
    constexpr auto steps = 50;
    for (auto step = 0; step < steps; ++step) {
        end.setAlphaF(static_cast<float>(step) / steps);
        const auto mixed = over(end, color);
        if (ratio(mixed, background) >= atLeast)
            return mixed;
    }
    end.setAlphaF(1);
    return end;
}

} // namespace tarnwik
