#pragma once

#include <QImage>
#include <QWidget>

namespace HarrowlaneApp {

class ApplicationLook;

/// Pictures of views that are never on a screen, at two pixels a point. Need a QApplication.
namespace ViewPictures {

/// The view as it is, at that size. Null where there can be no such image.
[[nodiscard]] QImage of(QWidget& view, const QSize& size);

/// A view without a ground of its own: on one, with that much of it around, as wide as the dashboard and as high as
/// the view wants. The view goes away with the picture.
[[nodiscard]] QImage onGround(QWidget* view, const ApplicationLook& look, int margin = 20);

} // namespace ViewPictures

} // namespace HarrowlaneApp
