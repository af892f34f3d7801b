#include "HarrowlaneApp/Shell/ViewPictures.h"

#include <QApplication>
#include <QPainter>
#include <QVBoxLayout>

#include "HarrowlaneApp/Drawing/Images.h"
#include "HarrowlaneApp/Views/DashboardView.h"
#include "HarrowlaneApp/Views/GroundView.h"

namespace HarrowlaneApp::ViewPictures {

namespace {

constexpr double scale = 2.0;
// What scrolls learns its content's size from events, and asks for others with that.
constexpr int rounds = 6;

void settle() {
    for (int round = 0; round < rounds; ++round) QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

} // namespace

QImage of(QWidget& view, const QSize& size) {
    view.setAttribute(Qt::WA_DontShowOnScreen);
    view.resize(size);
    view.show();
    settle();
    QImage image = Images::drawn(view.size(), scale, [&view](QPainter& painter) {
        view.render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
    });
    view.hide();
    return image;
}

QImage onGround(QWidget* view, const ApplicationLook& look, int margin) {
    GroundView sheet(look);
    auto* column = new QVBoxLayout(&sheet);
    column->setContentsMargins(margin, margin, margin, margin);
    column->addWidget(view);
    const int width = DashboardView::firstSize.width();
    const int height = column->hasHeightForWidth() ? column->heightForWidth(width) : column->sizeHint().height();
    return of(sheet, {width, height});
}

} // namespace HarrowlaneApp::ViewPictures
