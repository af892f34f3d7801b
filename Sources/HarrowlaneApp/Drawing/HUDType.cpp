#include "HarrowlaneApp/Drawing/HUDType.h"

#include <algorithm>
#include <array>

#include <QFontDatabase>

// Resources of a static library are not there until they are asked for; the macro must stand outside all namespaces.
static void bringResources() {
    Q_INIT_RESOURCE(fonts);
}

namespace HarrowlaneApp::HUDType {

namespace {

constexpr std::array faces{
    "ChakraPetch-Regular", "ChakraPetch-Medium", "ChakraPetch-SemiBold",
    "ChakraPetch-Bold",    "Michroma-Regular",   "ShareTechMono-Regular",
};

bool registerFaces() {
    bringResources();
    const auto load = [](const char* face) {
        return QFontDatabase::addApplicationFont(QStringLiteral(":/fonts/%1.ttf").arg(QLatin1String(face))) >= 0;
    };
    // No short cut: also where one is missing, the others are to be there.
    return std::ranges::count_if(faces, load) == std::ssize(faces);
}

QFont::Weight fontWeight(Weight weight) {
    switch (weight) {
    case Weight::bold:
    case Weight::heavy:
    case Weight::black: return QFont::Bold;
    case Weight::semibold: return QFont::DemiBold;
    case Weight::medium: return QFont::Medium;
    default: return QFont::Normal;
    }
}

QFont face(const char* family) {
    return registered() ? QFont(QString::fromLatin1(family)) : QFontDatabase::systemFont(QFontDatabase::GeneralFont);
}

} // namespace

bool registered() {
    static const bool all = registerFaces();
    return all;
}

std::string_view faceName(Weight weight) {
    switch (fontWeight(weight)) {
    case QFont::Bold: return "ChakraPetch-Bold";
    case QFont::DemiBold: return "ChakraPetch-SemiBold";
    case QFont::Medium: return "ChakraPetch-Medium";
    default: return "ChakraPetch-Regular";
    }
}

HUDFont text(double size, Weight weight) {
    QFont chosen = face("Chakra Petch");
    chosen.setWeight(fontWeight(weight));
    return {chosen, size};
}

HUDFont display(double size, double tracking) {
    return {face("Michroma"), size, tracking};
}

HUDFont mono(double size) {
    return {face("Share Tech Mono"), size};
}

HUDFont systemBold(double size) {
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    font.setWeight(QFont::Bold);
    return {font, size};
}

} // namespace HarrowlaneApp::HUDType
