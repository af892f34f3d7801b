#include "HarrowlaneApp/Platform/ApplicationBundle.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>

namespace HarrowlaneApp {

namespace {

/// The text of a dictionary's key, where it has one. The reader stands in the dictionary's start.
std::optional<std::string> textOfKey(QXmlStreamReader& reader, QStringView key) {
    bool follows = false;
    while (reader.readNextStartElement()) {
        if (reader.name() == u"key") {
            follows = reader.readElementText() == key;
        } else if (follows) {
            if (reader.name() != u"string") return std::nullopt;
            return reader.readElementText().trimmed().toStdString();
        } else {
            reader.skipCurrentElement();
        }
    }
    return std::nullopt;
}

std::optional<std::string> identifierIn(const std::filesystem::path& propertyList) {
    QFile file(propertyList);
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    QXmlStreamReader reader(&file);
    if (!reader.readNextStartElement() || reader.name() != u"plist") return std::nullopt;
    if (!reader.readNextStartElement() || reader.name() != u"dict") return std::nullopt;
    const auto identifier = textOfKey(reader, u"CFBundleIdentifier");
    if (!identifier || identifier->empty() || reader.hasError()) return std::nullopt;
    return identifier;
}

} // namespace

std::optional<ApplicationBundle> ApplicationBundle::containing(const std::filesystem::path& executable) {
    const std::filesystem::path folder = executable.parent_path();
    const std::filesystem::path contents = folder.parent_path();
    if (folder.filename() != "MacOS" || contents.filename() != "Contents") return std::nullopt;
    if (contents.parent_path().extension() != ".app") return std::nullopt;
    const auto identifier = identifierIn(contents / "Info.plist");
    if (!identifier) return std::nullopt;
    return ApplicationBundle{.identifier = *identifier, .contents = contents};
}

std::optional<ApplicationBundle> ApplicationBundle::ofThisProcess() {
    return containing(QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath().toStdString());
}

} // namespace HarrowlaneApp
