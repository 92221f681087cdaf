#include "platform/linux/secret_service_keychain.h"

#include <utility>

#include "platform/linux/background_thread.h"
#include "platform/linux/keychain_status.h"

namespace lunevra {
namespace {

using std::chrono_literals::operator""ms;
using std::chrono_literals::operator""s;

constexpr auto firstAnswerPatience = 200ms;
constexpr auto patience = 2000ms;
constexpr auto changesTogether = 100ms;  // services announce one change several times
constexpr auto untilNextTry = 5000ms;

using Work = std::function<void()>;

}  // namespace

SecretServiceKeychain::SecretServiceKeychain()
    : context_(g_main_context_new()), client_(std::make_unique<SecretServiceClient>()) {
  client_->onChange = [this] { refreshAfter(changesTogether); };
  client_->onGone = [this] {
    forgetAnswers();
    // An answer may have been under way, and a service that crashed may be started again.
    refreshAfter(untilNextTry);
  };
  thread_ = startBackgroundThread([this] { serve(); });
}

SecretServiceKeychain::~SecretServiceKeychain() {
  if (!thread_) return;
  post([this] {
    isStopped_ = true;
    if (job_ != nullptr) job_->cancel();
  });
  thread_->join();
}

std::optional<Bytes> SecretServiceKeychain::find(const KeychainItemName& name) const {
  std::unique_lock lock(mutex_);
  if (const auto found = answers_.find(name); found != answers_.end())
    return found->second.value_or(std::nullopt);
  answers_.emplace(name, std::nullopt);
  if (!thread_) return std::nullopt;
  post([self = const_cast<SecretServiceKeychain*>(this)] { self->isRefreshDue_ = true; });
  news_.wait_for(lock, firstAnswerPatience, [&] { return answers_[name].has_value(); });
  return answers_[name].value_or(std::nullopt);
}

SecretServiceKeychain::Status SecretServiceKeychain::remove(const KeychainItemName& name) {
  return carryOut(name, [this, name](BoundedJob& job) {
    const auto status = client_->remove(job, name);
    if (status == keychain_status::success) keep(name, std::nullopt);
    return status;
  });
}

SecretServiceKeychain::Status SecretServiceKeychain::add(const KeychainItemName& name,
                                                         const Bytes& value) {
  return carryOut(name, [this, name, value](BoundedJob& job) {
    const auto status = client_->add(job, name, value);
    if (status == keychain_status::success) keep(name, value);
    return status;
  });
}

SecretServiceKeychain::Status SecretServiceKeychain::carryOut(
    const KeychainItemName& name, std::function<Status(BoundedJob&)> make) {
  if (!thread_) return std::nullopt;
  const auto change = std::make_shared<Change>();
  change->make = std::move(make);
  post([this, change] {
    changes_.push_back(change);
    if (job_ != nullptr) job_->cancel();  // the person waits for this one
  });
  std::unique_lock lock(mutex_);
  answers_.try_emplace(name);
  if (news_.wait_for(lock, patience, [&] { return change->result.has_value(); }))
    return *change->result;
  change->isAbandoned = true;
  return keychain_status::notAvailable;
}

void SecretServiceKeychain::post(std::function<void()> work) const {
  auto* const source = g_idle_source_new();
  g_source_set_priority(source, G_PRIORITY_DEFAULT);
  const auto call = [](gpointer data) -> gboolean {
    (*static_cast<Work*>(data))();
    return G_SOURCE_REMOVE;
  };
  const auto release = [](gpointer data) { std::unique_ptr<Work>(static_cast<Work*>(data)); };
  g_source_set_callback(source, call, std::make_unique<Work>(std::move(work)).release(), release);
  g_source_attach(source, context_.get());
  g_source_unref(source);
}

void SecretServiceKeychain::serve() {
  g_main_context_push_thread_default(context_.get());
  while (!isStopped_) {
    if (!changes_.empty())
      makeChange();
    else if (std::exchange(isRefreshDue_, false))
      refresh();
    else
      g_main_context_iteration(context_.get(), TRUE);
  }
  refreshTimer_.reset();
  client_.reset();
  // What the library has put off until its objects are gone.
  while (g_main_context_iteration(context_.get(), FALSE) != FALSE) continue;
  g_main_context_pop_thread_default(context_.get());
}

void SecretServiceKeychain::makeChange() {
  const auto change = changes_.front();
  changes_.erase(changes_.begin());
  {
    const std::lock_guard lock(mutex_);
    if (change->isAbandoned) return;
  }
  BoundedJob job(context_.get(), patience);
  job_ = &job;
  const auto result = change->make(job);
  job_ = nullptr;
  refreshAfter(0ms);
  const std::lock_guard lock(mutex_);
  change->result = result;
  news_.notify_all();
}

void SecretServiceKeychain::refresh() {
  std::vector<KeychainItemName> names;
  {
    const std::lock_guard lock(mutex_);
    for (const auto& [name, answer] : answers_) names.push_back(name);
  }
  BoundedJob job(context_.get(), patience);
  job_ = &job;
  for (const auto& name : names) {
    const auto found = client_->find(job, name);
    if (isStopped_) break;
    if (!changes_.empty()) {
      isRefreshDue_ = true;  // what was cut short says nothing about the service
      break;
    }
    keep(name, found.value);
    if (found.reach == SecretServiceClient::Reach::silent) refreshAfter(untilNextTry);
  }
  job_ = nullptr;
}

void SecretServiceKeychain::refreshAfter(std::chrono::milliseconds delay) {
  refreshTimer_.reset(g_timeout_source_new(static_cast<guint>(delay.count())));
  const auto ring = [](gpointer self) -> gboolean {
    static_cast<SecretServiceKeychain*>(self)->isRefreshDue_ = true;
    return G_SOURCE_REMOVE;
  };
  g_source_set_callback(refreshTimer_.get(), ring, this, nullptr);
  g_source_attach(refreshTimer_.get(), context_.get());
}

void SecretServiceKeychain::keep(const KeychainItemName& name, std::optional<Bytes> value) {
  const std::lock_guard lock(mutex_);
  answers_[name] = std::optional(std::move(value));
  news_.notify_all();
}

void SecretServiceKeychain::forgetAnswers() {
  const std::lock_guard lock(mutex_);
  for (auto& [name, answer] : answers_) answer = std::optional<std::optional<Bytes>>(std::nullopt);
}

}  // namespace lunevra
