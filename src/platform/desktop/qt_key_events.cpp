#include "platform/desktop/qt_key_events.h"

#include <utility>

#include <QCoreApplication>
#include <QKeyEvent>

namespace lunevra {
namespace {

bool isModifier(int key) {
  switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
    case Qt::Key_ScrollLock:
      return true;
    default:
      return false;
  }
}

KeyEventKind kindOf(const QKeyEvent& event) {
  if (isModifier(event.key())) return KeyEventKind::flagsChanged;
  return event.type() == QEvent::KeyRelease ? KeyEventKind::keyUp : KeyEventKind::keyDown;
}

bool includes(KeyEventKind kinds, KeyEventKind kind) {
  return (static_cast<std::uint32_t>(kinds) & static_cast<std::uint32_t>(kind)) != 0;
}

}  // namespace

QtKeyEvents::QtKeyEvents() {
  QCoreApplication::instance()->installEventFilter(&filter_);
}

Registration QtKeyEvents::addLocalMonitor(KeyEventKind kinds,
                                          std::function<KeyEventDisposition(KeyEventKind)> decide) {
  const auto id = nextId_++;
  monitors_->emplace(id, std::make_shared<const Monitor>(Monitor{kinds, std::move(decide)}));
  return Registration([monitors = std::weak_ptr(monitors_), id] {
    if (const auto held = monitors.lock()) held->erase(id);
  });
}

bool QtKeyEvents::Filter::eventFilter(QObject*, QEvent* event) {
  const auto type = event->type();
  if (type != QEvent::KeyPress && type != QEvent::KeyRelease && type != QEvent::ShortcutOverride)
    return false;
  if (!isDiscarded(kindOf(static_cast<const QKeyEvent&>(*event)))) return false;
  event->accept();  // or Qt would try it as a shortcut next
  return true;
}

bool QtKeyEvents::Filter::isDiscarded(KeyEventKind kind) const {
  const auto monitors = monitors_;  // one of them may end from within its own decision
  for (const auto& [id, monitor] : monitors)
    if (includes(monitor->kinds, kind) && monitor->decide(kind) == KeyEventDisposition::discard)
      return true;
  return false;
}

}  // namespace lunevra
