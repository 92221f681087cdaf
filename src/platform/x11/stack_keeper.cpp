#include "platform/x11/stack_keeper.h"

#include <chrono>
#include <cstdint>
#include <utility>

#include "platform/x11/x_reply.h"

namespace lunevra {
namespace {

// A rival in an endless loop is not to keep the server from all else.
constexpr auto restBetweenAnswers = std::chrono::milliseconds(2);

}  // namespace

// Each window goes under the one before it: where the order is right already, the server neither
// paints nor reports anything.
void stackOnTop(xcb_connection_t* connection, const WindowPile& pile) {
  const std::uint32_t onTop[] = {XCB_STACK_MODE_ABOVE};
  xcb_window_t above = XCB_WINDOW_NONE;
  for (const auto window : pile) {
    const std::uint32_t under[] = {above, XCB_STACK_MODE_BELOW};
    if (above == XCB_WINDOW_NONE)
      xcb_configure_window(connection, window, XCB_CONFIG_WINDOW_STACK_MODE, onTop);
    else
      xcb_configure_window(connection, window,
                           XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE, under);
    above = window;
  }
  xcb_flush(connection);
}

StackKeeper::StackKeeper(WindowPile pile)
    : x_(XConnection::open()), mailbox_(xcb_generate_id(x_.get())), pile_(std::move(pile)) {
  const std::uint32_t changes[] = {XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY};
  xcb_change_window_attributes(x_.get(), x_.screen->root, XCB_CW_EVENT_MASK, changes);
  xcb_create_window(x_.get(), XCB_COPY_FROM_PARENT, mailbox_, x_.screen->root, 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
  restack();
  thread_ = std::thread([this] { run(); });
}

StackKeeper::~StackKeeper() {
  isEnding_ = true;
  xcb_client_message_event_t end{};
  end.response_type = XCB_CLIENT_MESSAGE;
  end.format = 32;
  end.window = mailbox_;
  xcb_send_event(x_.get(), 0, mailbox_, XCB_EVENT_MASK_NO_EVENT,
                 reinterpret_cast<const char*>(&end));
  xcb_flush(x_.get());
  thread_.join();
}

void StackKeeper::setPile(WindowPile pile) {
  {
    const std::lock_guard lock(mutex_);
    pile_ = std::move(pile);
  }
  restack();
}

void StackKeeper::run() {
  pthread_setname_np(pthread_self(), "lunevra-stack");
  while (XReply<xcb_generic_event_t> event{xcb_wait_for_event(x_.get())}) {
    bool isDisturbed = false;
    for (; event; event.reset(xcb_poll_for_event(x_.get())))
      isDisturbed |= event->response_type != 0;  // 0: a window of the pile has just gone
    if (isEnding_) return;
    if (isDisturbed) restack();
    std::this_thread::sleep_for(restBetweenAnswers);
  }
}

void StackKeeper::restack() {
  const std::lock_guard lock(mutex_);
  stackOnTop(x_.get(), pile_);
}

}  // namespace lunevra
