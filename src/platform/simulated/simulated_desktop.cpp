#include "platform/simulated/simulated_desktop.h"

#include <algorithm>
#include <utility>

namespace lunevra {

std::vector<Screen> SimulatedDisplays::screens() const {
  std::vector<Screen> attached;
  for (const auto& [name, frame] : named_)
    if (frame) attached.push_back({name, *frame});
  return attached;
}

std::optional<Screen> SimulatedDisplays::mainScreen() const {
  const auto attached = screens();
  if (attached.empty()) return std::nullopt;
  const auto main = std::find_if(attached.begin(), attached.end(),
                                 [&](const auto& screen) { return screen.name == main_; });
  return main == attached.end() ? attached.front() : *main;
}

SimulatedDisplays::Named& SimulatedDisplays::named(const std::string& name) {
  const auto known = std::find_if(named_.begin(), named_.end(),
                                  [&](const auto& display) { return display.name == name; });
  return known != named_.end() ? *known : named_.emplace_back(Named{name, std::nullopt});
}

void SimulatedDisplays::set(const std::string& name, const Rect& frame) {
  named(name).frame = frame;
}

void SimulatedDisplays::remove(const std::string& name) {
  named(name).frame.reset();
}

SimulatedWindow::SimulatedWindow(SimulatedApplication& application,
                                 const WindowDescription& description)
    : application_(application), frame_(description.contentRect) {
  if (description.screen) screenName_ = description.screen->name;
}

void SimulatedWindow::orderFrontRegardless() {
  isVisible_ = true;
}

void SimulatedWindow::orderOut() {
  isVisible_ = false;
  if (application_.keyWindow_.get() == this) application_.keyWindow_.reset();
}

void SimulatedWindow::makeKeyWindow() {
  application_.keyWindow_ = shared_from_this();
}

void SimulatedWindow::close() {
  orderOut();
  std::erase(application_.windows_, shared_from_this());
}

std::optional<std::string> SimulatedWindow::screenName() const {
  const auto screens = application_.displays_.screens();
  const bool isAttached = std::any_of(screens.begin(), screens.end(), [&](const auto& screen) {
    return screen.name == screenName_;
  });
  return isAttached ? screenName_ : std::nullopt;
}

std::vector<std::shared_ptr<Window>> SimulatedApplication::windows() const {
  return {windows_.begin(), windows_.end()};
}

std::shared_ptr<Window> SimulatedApplication::makeWindow(const WindowDescription& description) {
  return windows_.emplace_back(std::make_shared<SimulatedWindow>(*this, description));
}

void SimulatedApplication::beginProcess() {
  windows_.clear();
  keyWindow_.reset();
  options_ = PresentationOptions::standard;
  isActive_ = true;
  const auto group = std::make_shared<SimulatedWindow>(*this, WindowDescription{});
  windows_.push_back(group);
  group->orderFrontRegardless();
  group->makeKeyWindow();
}

Registration SimulatedKeyEvents::addLocalMonitor(
    KeyEventKind kinds, std::function<KeyEventDisposition(KeyEventKind)> decide) {
  const auto id = nextId_++;
  monitors_->emplace(id, Monitor{kinds, std::move(decide)});
  return Registration([monitors = std::weak_ptr(monitors_), id] {
    if (const auto held = monitors.lock()) held->erase(id);
  });
}

KeyEventDisposition SimulatedKeyEvents::send(KeyEventKind kind) const {
  for (const auto& [id, monitor] : *monitors_) {
    const auto isAsked =
        (static_cast<std::uint32_t>(monitor.kinds) & static_cast<std::uint32_t>(kind)) != 0;
    if (isAsked && monitor.decide(kind) == KeyEventDisposition::discard)
      return KeyEventDisposition::discard;
  }
  return KeyEventDisposition::passOn;
}

}  // namespace lunevra
