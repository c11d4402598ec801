#include "vndata/platform/host_services.h"

namespace vndata {

int32_t HostServices::ChoiceDialog(const std::string&, const std::string&, int32_t,
                                   const Array<std::string>& zButtons) {
  // With nobody to ask, the last button (the most cautious one by the
  // library's convention) is the answer.
  return zButtons.IsAllocated() ? static_cast<int32_t>(zButtons.size()) : 0;
}

bool HostServices::YesNoQuestion(const std::string&, const std::string&) { return false; }

void HostServices::InformationMessage(const std::string&, const std::string&) {}

std::string HostServices::FileSaveDialog(const std::string&, const std::string&,
                                         const std::string&) {
  return std::string();
}

void HostServices::SetBusyCursor(bool) {}

namespace {
std::shared_ptr<HostServices>& InstalledHost() {
  thread_local std::shared_ptr<HostServices> host;
  return host;
}
}  // namespace

void SetHostServices(std::shared_ptr<HostServices> host) { InstalledHost() = std::move(host); }

HostServices& GetHostServices() {
  thread_local HostServices defaults;
  auto& host = InstalledHost();
  return host ? *host : defaults;
}

}  // namespace vndata
