#include "HarrowlaneApp/Views/SpokenPicture.h"

#include <cmath>
#include <utility>

#include <QPainter>

namespace HarrowlaneApp {

SpokenPicture::SpokenPicture(const ApplicationLook& look, QWidget* parent) : HUDWidget(look, parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void SpokenPicture::setContent(Content content) {
    const bool isResized = content.size != content_.size;
    content_ = std::move(content);
    if (content_.words != accessibleName()) setAccessibleName(content_.words);
    if (isResized) updateGeometry();
    update();
}

QSize SpokenPicture::sizeHint() const {
    return {static_cast<int>(std::ceil(content_.size.width())), static_cast<int>(std::ceil(content_.size.height()))};
}

void SpokenPicture::paintEvent(QPaintEvent* /*event*/) {
    if (!content_.paint) return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    content_.paint(painter, rect(), look());
}

} // namespace HarrowlaneApp
