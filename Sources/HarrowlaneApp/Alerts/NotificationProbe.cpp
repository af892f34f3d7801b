#include "HarrowlaneApp/Alerts/NotificationProbe.h"

namespace HarrowlaneApp::NotificationProbe {

namespace {

std::string nameOf(const Sample& sample) {
    return std::to_string(sample.threshold) + "% " + std::string(text(sample.window));
}

} // namespace

Banner banner(const Sample& sample, UsageModel::Date now) {
    Banner banner = Banners::level({.window = sample.window,
                                    .threshold = sample.threshold,
                                    .used = sample.used,
                                    .resetsAt = now + sample.resetsInSeconds},
                                   now);
    banner.identifier = "hwl-probe-" + std::string(text(sample.window)) + "-" + std::to_string(sample.threshold) + "-" +
                        wholeNumber(now.secondsSince1970);
    banner.delaySeconds = sample.delaySeconds;
    return banner;
}

std::string permissionLine(const PermissionAnswer& answer) {
    if (answer.error) return "requestAuthorization failed: " + *answer.error;
    return std::string("requestAuthorization granted=") + (answer.granted ? "true" : "false");
}

std::string statusLine(AuthorizationStatus status) {
    return "authorizationStatus=" + describe(status);
}

std::string postLines(const Sample& sample, const Banner& posted, const std::optional<std::string>& error) {
    if (error) return "FAILED " + nameOf(sample) + ": " + *error;
    return "posted " + nameOf(sample) + " (+" + wholeNumber(posted.delaySeconds) + "s): " + posted.title + "\n" +
           posted.body;
}

std::string deliveredLines(const std::vector<std::string>& identifiers) {
    std::string lines = "delivered and sitting in Notification Center: " + std::to_string(identifiers.size()) + ".";
    for (const std::string& identifier : identifiers) lines += "\n  · " + identifier;
    return lines;
}

} // namespace HarrowlaneApp::NotificationProbe
