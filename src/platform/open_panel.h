#pragma once

#include <functional>
#include <optional>
#include <string>

namespace lunevra {

/// A chooser for one existing folder.
struct FolderPanelRequest {
  std::string title;
  std::string message;
  std::string prompt;
  std::string startDirectory;
};

class OpenPanels {
 public:
  virtual ~OpenPanels() = default;

  /// Shows a non-modal panel and returns; `completion` gets the chosen folder, or nothing if the
  /// person cancelled, later on the main thread. Main thread only.
  virtual void chooseFolder(const FolderPanelRequest& request,
                            std::function<void(std::optional<std::string>)> completion) = 0;
};

}  // namespace lunevra
