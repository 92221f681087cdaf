#include "rehearsal/photographer.h"

#include <filesystem>
#include <utility>

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>

#include "platform/localized_error.h"

namespace lunevra::rehearsal {

Photographer::Photographer(std::string folder) : folder_(std::move(folder)) {
  std::error_code error;
  if (isHired()) std::filesystem::create_directories(folder_, error);
  if (error) throw LocalizedError("cannot make the folder " + folder_ + ": " + error.message());
}

void Photographer::takePictures(const std::string& stateName) {
  ++taken_;
  const auto number = (taken_ < 10 ? "0" : "") + std::to_string(taken_);
  for (auto* const screen : QGuiApplication::screens()) {
    const auto file =
        folder_ + "/" + number + "-" + stateName + "-" + screen->name().toStdString() + ".png";
    if (!screen->grabWindow(0).save(QString::fromStdString(file)))
      throw LocalizedError("cannot save " + file);
  }
}

}  // namespace lunevra::rehearsal
