#pragma once

namespace lunevra {

/// SIGTERM, SIGINT and SIGHUP as something to read instead of the end of the process. To be made
/// before any thread is started, so that no thread is left that they could end the process through.
class TerminationSignals {
 public:
  /// Throws LocalizedError.
  TerminationSignals();
  ~TerminationSignals();
  TerminationSignals(const TerminationSignals&) = delete;
  TerminationSignals& operator=(const TerminationSignals&) = delete;

  /// Readable when a signal has come.
  [[nodiscard]] int fileDescriptor() const { return descriptor_; }
  /// Takes the signals that have come; whether there was one.
  [[nodiscard]] bool take();

 private:
  int descriptor_;
};

}  // namespace lunevra
