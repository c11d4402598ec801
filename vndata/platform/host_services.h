// What the host provides: the message-loop yield, dialogs, the busy cursor
// and the progress container.
//
// The base class already gives the non-interactive answers, so a host (or a
// test) overrides only what it has. A thread with no host installed gets
// those defaults: the choice dialog answers its last button, the question
// answers no, the save dialog answers the empty string (cancelled), the yield
// does nothing.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "vndata/platform/api.h"
#include "vndata/platform/arrays.h"

namespace vndata {

class VNDATA_API HostServices {
 public:
  virtual ~HostServices() = default;

  // Lets the host's message loop run; the host may set CancelLoad meanwhile.
  virtual void Yield() {}
  // Shows zText with the buttons; returns the 1-based button chosen.
  virtual int32_t ChoiceDialog(const std::string& zText, const std::string& zCaption,
                               int32_t iStyle, const Array<std::string>& zButtons);
  virtual bool YesNoQuestion(const std::string& zTitle, const std::string& zText);
  virtual void InformationMessage(const std::string& zTitle, const std::string& zText);
  // Returns the chosen file name; the empty string means cancelled.
  virtual std::string FileSaveDialog(const std::string& zTitle, const std::string& zProposedName,
                                     const std::string& zFilter);
  virtual void SetBusyCursor(bool qBusy);
};

// Installs the host services for this thread; nullptr restores the defaults.
VNDATA_API void SetHostServices(std::shared_ptr<HostServices> host);
// The services in force for this thread (never null).
VNDATA_API HostServices& GetHostServices();

// The host's progress-bar container. The library only reports to it.
class VNDATA_API ProgressContainer {
 public:
  virtual ~ProgressContainer() = default;
  // One step of a long read or write loop.
  virtual void Tick() {}
  // A progress text from a long operation.
  virtual void SetText(const std::string& /*zText*/) {}
};

}  // namespace vndata
