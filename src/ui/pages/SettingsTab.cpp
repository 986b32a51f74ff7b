#include "ui/pages/SettingsTab.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "settings/Language.h"
#include "settings/Preferences.h"
#include "settings/Settings.h"
#include "ui/components/Card.h"
#include "ui/components/Dashboard.h"
#include "ui/components/Shell.h"
#include "ui/view/View.h"

namespace kestrune::ui {
namespace {

using platform::NotificationAuthorization;

constexpr auto leading = HorizontalAlignment::leading;
constexpr auto centered = VerticalAlignment::center;
constexpr double iconWidth = 24;
constexpr double rowPadding = 8;

View row(std::string symbolName, std::string title, View control) {
  return hstack(innerSpacing, centered,
                views(symbol(std::move(symbolName)).withForeground(ColorRole::secondary).width(iconWidth),
                      text(std::move(title)), spacer(), std::move(control)))
      .paddingVertical(rowPadding);
}

// Indents a part of the row above to line up with its text.
View under(View content) {
  return std::move(content).padding(
      {.top = 0, .leading = iconWidth + innerSpacing, .bottom = rowPadding, .trailing = 0});
}

View hint(View words, Color color = ColorRole::secondary) {
  return under(std::move(words).withFont(11).withForeground(color).fillWidth());
}

// The look of a control that can be pressed.
View bordered(View words) {
  return std::move(words).paddingHorizontal(10).paddingVertical(3).background(
      {.fill = Color(ColorRole::primary, 0.06),
       .cornerRadius = 5,
       .border = Color(ColorRole::primary, 0.14),
       .borderWidth = 1});
}

View borderedButton(View words, std::function<void()> action) {
  return button(bordered(std::move(words).withFont(12)), std::move(action));
}

View switchFor(const std::string& title, const Preference<bool>& preference) {
  return toggle(key(title), preference.get(), [preference](bool isOn) { preference.set(isOn); });
}

// A segmented picker over what may be stored. A stored value that is not among the choices selects none.
template <class T>
struct Choice {
  T value;
  const char* title;  // localizable
};
template <class T, std::size_t count>
View pickerFor(const Preference<T>& preference, const std::array<Choice<T>, count>& choices) {
  std::vector<TextContent> labels;
  labels.reserve(count);
  for (const auto& choice : choices) labels.push_back(key(choice.title));
  const auto found = std::ranges::find(choices, preference.get(), &Choice<T>::value);
  const int selected = found == choices.end() ? -1 : static_cast<int>(found - choices.begin());
  return segmentedPicker(std::move(labels), selected, [preference, choices](int index) {
    preference.set(choices.at(static_cast<std::size_t>(index)).value);
  });
}

const std::array<Choice<std::string>, 2> memoryChoices{
    {{"warning", "Warning or higher"}, {"critical", "Critical only"}}};
constexpr std::array<Choice<std::int64_t>, 4> diskChoices{
    {{5, "5% free"}, {10, "10% free"}, {15, "15% free"}, {20, "20% free"}}};
constexpr std::array<Choice<std::int64_t>, 6> dataChoices{
    {{1, "1 GB"}, {2, "2 GB"}, {5, "5 GB"}, {10, "10 GB"}, {20, "20 GB"}, {50, "50 GB"}}};
constexpr std::array<Choice<std::int64_t>, 3> retentionChoices{
    {{7, "7 days"}, {30, "30 days"}, {90, "90 days"}}};

// A menu over the choices, where they are too many for a picker.
template <class T, std::size_t count>
View menuFor(const Preference<T>& preference, const std::array<Choice<T>, count>& choices) {
  const auto found = std::ranges::find(choices, preference.get(), &Choice<T>::value);
  std::vector<MenuItem> items;
  items.reserve(count);
  for (const auto& choice : choices) {
    items.push_back({.title = key(choice.title),
                     .symbol = found != choices.end() && choice.value == found->value ? "checkmark" : "",
                     .action = [preference, value = choice.value] { preference.set(value); }});
  }
  auto shown = found == choices.end() ? verbatim("—") : text(found->title);
  return menu(
      bordered(hstack(6, centered, views(std::move(shown).withFont(12), symbol("chevron.down").withFont(9)))),
      std::move(items));
}

// A title above a card of rows.
View settingsSection(std::string title, std::vector<View> rows) {
  return vstack(6, leading,
                views(sectionHeader(text(std::move(title)).withFont(13, FontWeight::semibold)),
                      Card{dividedRows(std::move(rows))}));
}

// A row with its parts, without dividers between them.
View group(std::vector<View> parts) {
  return vstack(0, leading, std::move(parts));
}

}  // namespace

SettingsTab::SettingsTab(const ViewContext& context)
    : launchAtLogin(context.shell.loginItem.isEnabled()),
      context_(context),
      alertSettings_(context.preferences),
      showHints_(context.preferences, settings::showHints),
      showFolderTab_(context.preferences, settings::showFolderTab),
      retentionDays_(context.preferences, settings::retentionDays) {
  keepSandboxedProcessesOff();
  context.env.alerts->refreshAuthorization();
  subscriptions_.push_back(
      context.notifications.observe(std::string(didBecomeActiveNotification), [this](const std::any&) {
        context_.env.alerts->refreshAuthorization();
        launchAtLogin.set(context_.shell.loginItem.isEnabled());
      }));
}

void SettingsTab::changeLaunchAtLogin(bool wanted) {
  auto& item = context_.shell.loginItem;
  launchAtLogin.set(wanted);
  const auto failure = wanted ? item.registerItem() : item.unregisterItem();
  if (failure) launchAtLogin.set(!wanted);
  launchAtLoginError.set(failure);
}

// A sandboxed process can't list other processes.
void SettingsTab::keepSandboxedProcessesOff() const {
  if (context_.isSandboxed) Preference(context_.preferences, settings::showProcesses).set(false);
}

View SettingsTab::body() {
  return dashboard(views(general(), menuBar(), alerts(), history(), about(), resetRow()));
}

View SettingsTab::general() {
  std::vector<View> rows;
  std::vector<View> login = views(row(
      "rectangle.topthird.inset.filled", "Launch at login",
      toggle(key("Launch at login"), launchAtLogin.get(), [this](bool isOn) { changeLaunchAtLogin(isOn); })));
  if (const auto& error = launchAtLoginError.get()) login.push_back(hint(verbatim(*error), ColorRole::red));
  rows.push_back(group(std::move(login)));
  if (context_.isSandboxed) {
    rows.push_back(row("lock.shield", "Show App Store upgrade hints",
                       switchFor("Show App Store upgrade hints", showHints_)));
    rows.push_back(row("folder", "Show Folders tab", switchFor("Show Folders tab", showFolderTab_)));
  }
  constexpr std::array codes{"en", "es"};
  auto picker = segmentedPicker({verbatimText("EN"), verbatimText("ES")},
                                context_.shell.language == "es" ? 1 : 0, [this, codes](int index) {
                                  setLanguage(codes.at(static_cast<std::size_t>(index)), context_.loop,
                                              context_.preferences, context_.shell.application);
                                });
  rows.push_back(group(views(row("globe", "Language", std::move(picker)),
                             hint(text("Changing the language restarts Kestrune.")))));
  return settingsSection("General", std::move(rows));
}

View SettingsTab::menuBar() const {
  struct Metric {
    const char* title;
    const char* symbol;
    Setting<bool> isShown;
  };
  constexpr std::array<Metric, 7> metrics{{{"CPU usage", "cpu", settings::showCPU},
                                           {"Memory usage", "memorychip", settings::showMemory},
                                           {"Disk activity", "internaldrive", settings::showDisk},
                                           {"Network throughput", "network", settings::showNetwork},
                                           {"IP address", "network", settings::showIP},
                                           {"Audio output", "waveform", settings::showAudio},
                                           {"Top processes", "list.number", settings::showProcesses}}};
  std::vector<View> rows;
  for (const Metric& metric : metrics) {
    const Preference preference(context_.preferences, metric.isShown);
    auto line = row(metric.symbol, metric.title, switchFor(metric.title, preference));
    const bool isForbidden = context_.isSandboxed && metric.isShown.key == settings::showProcesses.key;
    rows.push_back(std::move(line).disabled(isForbidden));
  }
  return settingsSection("Menu Bar", std::move(rows));
}

View SettingsTab::alerts() const {
  const bool isOn = alertSettings_.isEnabled.get();
  std::vector<View> rows;
  rows.push_back(group(views(
      row(isOn ? "bell.fill" : "bell.slash.fill", "Enable alerts",
          switchFor("Enable alerts", alertSettings_.isEnabled)),
      hint(text("Alerts send a macOS notification when CPU usage is sustained high, memory pressure rises, "
                "or disk space is low.")))));
  if (isOn) {
    const auto status = context_.env.alerts->authorizationStatus.get();
    const bool isAllowed =
        status == NotificationAuthorization::authorized || status == NotificationAuthorization::provisional;
    for (auto& each : isAllowed ? ruleRows() : permissionRows()) rows.push_back(std::move(each));
  }
  return settingsSection("Alerts", std::move(rows));
}

std::vector<View> SettingsTab::permissionRows() const {
  const bool isDenied = context_.env.alerts->authorizationStatus.get() == NotificationAuthorization::denied;
  auto words = text(isDenied ? "Notifications are blocked. Enable them in System Settings to receive alerts."
                             : "Kestrune needs permission to send notifications.")
                   .withFont(12)
                   .withForeground(ColorRole::secondary)
                   .fillWidth();
  auto act = borderedButton(text(isDenied ? "Open System Settings" : "Allow Notifications"),
                            [alerts = context_.env.alerts, isDenied] {
                              isDenied ? alerts->openNotificationSettings() : alerts->requestAuthorization();
                            });
  return views(
      hstack(innerSpacing, centered, views(std::move(words), std::move(act)))
          .padding(
              {.top = rowPadding, .leading = iconWidth + innerSpacing, .bottom = rowPadding, .trailing = 0}));
}

View SettingsTab::testButton(AlertsMonitor::Sample kind) const {
  return borderedButton(text("Test"), [alerts = context_.env.alerts, kind] { alerts->sendTest(kind); });
}

std::vector<View> SettingsTab::ruleRows() const {
  using Sample = AlertsMonitor::Sample;
  const auto rule = [this](std::string symbolName, std::string title, const Preference<bool>& isEnabled,
                           Sample kind, const std::function<View()>& control) {
    auto turn = switchFor(title, isEnabled);
    if (!isEnabled.get()) return row(std::move(symbolName), std::move(title), std::move(turn));
    auto controls = hstack(innerSpacing, centered, views(testButton(kind), std::move(turn)));
    return group(views(row(std::move(symbolName), std::move(title), std::move(controls)), under(control())));
  };
  const auto& settings = alertSettings_;
  const auto cpuControl = [&settings] {
    const double percentage = settings.cpuThreshold.get();
    auto percent = std::isfinite(percentage) ? std::to_string(std::llround(percentage)) + "%" : "—";
    return hstack(
        innerSpacing, centered,
        views(slider(key("CPU high usage"), {.value = percentage,
                                             .min = 50,
                                             .max = 99,
                                             .step = 5,
                                             .onChange = [threshold = settings.cpuThreshold](
                                                             double value) { threshold.set(value); }})
                  .frame({.fixed = {}, .min = {}, .max = 320}, {}),
              verbatim(percent).withMonospacedDigits(14).width(36, HorizontalAlignment::trailing)));
  };
  const auto dataControl = [&settings] {
    return hstack(innerSpacing, centered,
                  views(text("Alert at").withForeground(ColorRole::secondary),
                        menuFor(settings.networkDailyGB, dataChoices)));
  };
  return views(rule("cpu", "CPU high usage", settings.cpuIsEnabled, Sample::cpu, cpuControl),
               rule("memorychip", "Memory pressure", settings.memoryIsEnabled, Sample::memory,
                    [&settings] { return pickerFor(settings.memoryThreshold, memoryChoices); }),
               rule("internaldrive", "Low disk space", settings.diskIsEnabled, Sample::disk,
                    [&settings] { return pickerFor(settings.diskThreshold, diskChoices); }),
               rule("network", "Daily data usage", settings.networkIsEnabled, Sample::network, dataControl));
}

View SettingsTab::history() const {
  return settingsSection(
      "History",
      views(group(views(row("calendar", "Keep data for", pickerFor(retentionDays_, retentionChoices)),
                        hint(text("Metrics are sampled once per minute while Kestrune is running."))))));
}

View SettingsTab::about() const {
  const auto value = [](const std::string& data) {
    return verbatim(data).withForeground(ColorRole::secondary).withLineLimit(1);
  };
  return settingsSection("About", views(row("info.circle.fill", "Version", value(context_.shell.version)),
                                        row("laptopcomputer", "macOS", value(context_.shell.systemVersion))));
}

View SettingsTab::resetRow() {
  auto reset = borderedButton(text("Reset"), [this] { showResetConfirm.set(true); });
  std::vector<View> parts =
      views(hstack(innerSpacing, centered,
                   views(text("Reset all settings to their defaults"), spacer(), std::move(reset)))
                .paddingVertical(rowPadding));
  if (showResetConfirm.get()) {
    AlertContent question{
        .title = key("Reset All Settings?"),
        .message =
            key("Defaults: CPU alert ON at 80%, memory at warning pressure, disk at 10% free, network "
                "alerts OFF. Menu bar shows CPU and memory. History retention: 30 days. Recorded data is "
                "not deleted."),
        .choices = {}};
    question.choices.push_back({.title = key("Reset"), .isDestructive = true, .action = [this] {
                                  showResetConfirm.set(false);
                                  resetAllSettings(context_.preferences);
                                }});
    question.choices.push_back(
        {.title = key("Cancel"), .isCancel = true, .action = [this] { showResetConfirm.set(false); }});
    parts.emplace_back(std::move(question));
  }
  return Card{vstack(0, leading, std::move(parts))};
}

}  // namespace kestrune::ui
