// The simulator file reader keeps the data set's IOEventHandler, an
// mxNotifyData, without the platform folder knowing the class.
#include <gtest/gtest.h>

#include "vndata/platform/sim_file_io.h"
#include "vndata/foundation/mx_notify_data.h"

using namespace vndata;

namespace {

TEST(SimFileIOEventHandler, KeepsTheHandlerItIsGivenUntilReplaced) {
  auto handler = std::make_shared<mxNotifyData>();
  SimFileIO io;
  EXPECT_EQ(io.get_EventHandler(), nullptr);
  io.SetEventHandler(handler);
  EXPECT_EQ(io.get_EventHandler(), handler);
  EXPECT_EQ(handler.use_count(), 2);
  io.SetEventHandler(nullptr);
  EXPECT_EQ(io.get_EventHandler(), nullptr);
  EXPECT_EQ(handler.use_count(), 1);
}

TEST(SimFileIOEventHandler, LastReferenceHeldByTheReaderReleasesTheHandler) {
  std::weak_ptr<mxNotifyData> seen;
  {
    SimFileIO io;
    auto handler = std::make_shared<mxNotifyData>();
    seen = handler;
    io.SetEventHandler(std::move(handler));
    EXPECT_FALSE(seen.expired());
  }
  EXPECT_TRUE(seen.expired());
}

}  // namespace
