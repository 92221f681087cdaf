// Answers under the firewall helper's name on the bus at ADDRESS, and appends what it is asked to
// the file RECORD:
//   lunevra_helper_stand_in ADDRESS RECORD succeed|silent|fail|crash|garble [message of a failure]
#include <cstdlib>
#include <fstream>
#include <string>
#include <systemd/sd-bus.h>

namespace {

struct StandIn {
  std::string record;
  std::string behaviour;
  const char* message;
};

int answer(StandIn& self, sd_bus_message* request) {
  if (self.behaviour == "silent") return 1;
  if (self.behaviour == "crash") std::_Exit(1);
  if (self.behaviour == "garble") return sd_bus_reply_method_return(request, "s", "yes");
  const int success = self.behaviour == "succeed" ? 1 : 0;
  if (self.message == nullptr) return sd_bus_reply_method_return(request, "bas", success, 0);
  return sd_bus_reply_method_return(request, "bas", success, 1, self.message);
}

int readStart(StandIn& self, sd_bus_message* request) {
  int domains = 0;
  std::string last;
  sd_bus_message_enter_container(request, 'a', "s");
  for (const char* domain = nullptr; sd_bus_message_read_basic(request, 's', &domain) > 0;
       ++domains)
    last = domain;
  sd_bus_message_exit_container(request);
  double until = 0;
  std::int64_t generation = 0;
  sd_bus_message_read(request, "dx", &until, &generation);
  std::ofstream(self.record, std::ios::app)
      << "start " << domains << " " << last << " " << std::fixed << until << " " << generation
      << std::endl;
  return answer(self, request);
}

int readClear(StandIn& self, sd_bus_message* request) {
  std::int64_t generation = 0;
  sd_bus_message_read(request, "x", &generation);
  std::ofstream(self.record, std::ios::app) << "clear " << generation << std::endl;
  return answer(self, request);
}

int take(sd_bus_message* request, void* context, sd_bus_error* /*error*/) {
  auto& self = *static_cast<StandIn*>(context);
  const char* const interface = "com.lunevra.FirewallHelper";
  if (sd_bus_message_is_method_call(request, interface, "StartBlock") > 0)
    return readStart(self, request);
  if (sd_bus_message_is_method_call(request, interface, "ClearBlock") > 0)
    return readClear(self, request);
  return 0;
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 4) return EXIT_FAILURE;
  StandIn self{arguments[2], arguments[3], count > 4 ? arguments[4] : nullptr};
  sd_bus* bus = nullptr;
  if (sd_bus_new(&bus) < 0 || sd_bus_set_address(bus, arguments[1]) < 0 ||
      sd_bus_set_bus_client(bus, 1) < 0 || sd_bus_start(bus) < 0 ||
      sd_bus_add_object(bus, nullptr, "/com/lunevra/firewall", take, &self) < 0 ||
      sd_bus_request_name(bus, "com.lunevra.firewall", 0) < 0)
    return EXIT_FAILURE;
  for (int result = 0; result >= 0;) {
    result = sd_bus_process(bus, nullptr);
    if (result == 0) result = sd_bus_wait(bus, UINT64_MAX);
  }
  return EXIT_SUCCESS;
}
