#pragma once

#include "platform/application.h"
#include "platform/calendar.h"
#include "platform/clock.h"
#include "platform/cloud_key_value_store.h"
#include "platform/displays.h"
#include "platform/helper_connection.h"
#include "platform/key_event_monitor.h"
#include "platform/keychain.h"
#include "platform/log.h"
#include "platform/notification_center.h"
#include "platform/open_panel.h"
#include "platform/random_source.h"
#include "platform/run_loop.h"
#include "platform/service_manager.h"
#include "platform/user_defaults.h"
#include "platform/volume_source.h"
#include "platform/workspace.h"

namespace lunevra {

/// What the logic asks of a computer, gathered so that one value wires an object. Everything
/// referred to outlives everything that was given it.
struct Host {
  Clock& clock;
  Calendar& calendar;
  RunLoop& runLoop;
  NotificationCenter& notificationCenter;
  UserDefaultsDomains& defaults;
  CloudKeyValueStore& cloud;
  Log& log;
  RandomSource& random;
  Keychain& keychain;
  VolumeSource& volumes;
  ServiceManager& services;
  HelperConnector& helperConnector;
  OpenPanels& openPanels;
};

/// What the shell asks of the window system; apart from `Host`, so that one computer can be
/// combined with another's screen.
struct Desktop {
  Displays& displays;
  Application& application;
  KeyEventMonitors& keyEvents;
  NotificationCenter& workspaceNotifications;
};

}  // namespace lunevra
