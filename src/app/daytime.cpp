#include "app/daytime.h"

#include <QCoreApplication>

#include "ui/daytime/daytime_content.h"

namespace lunevra {

DaytimeContents daytimeContents(const Host& host) {
  return {.settings =
              [host](ShutdownManager& engine, const SceneActions& scenes) {
                return settingsContent(host, engine, scenes.closeSettings);
              },
          .menu =
              [host](ShutdownManager& engine, const SceneActions& scenes) {
                return menuBarContent(host, engine,
                                      {.openSettings = scenes.openSettings,
                                       .terminate = [] { QCoreApplication::quit(); }},
                                      scenes.closeMenu);
              }};
}

}  // namespace lunevra
