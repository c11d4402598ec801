#include <gtest/gtest.h>

#include "tests/store/store_fixtures.h"
#include "vndata/derived/mx_derived_quantity.h"
#include "vndata/derived/mx_dq_store.h"

namespace vndata {
namespace {

class StoreDerivedTest : public StoreTest {
 protected:
  static std::shared_ptr<mxDerivedQuantity> Named(const std::string& zVerbose) {
    auto dq = std::make_shared<mxDerivedQuantity>();
    dq->let_Verbose(zVerbose);
    return dq;
  }
};

TEST_F(StoreDerivedTest, DefinitionsAreHeldAsCopies) {
  auto dq = Named("WCT");
  store.DQAdd(dq);
  EXPECT_EQ(store.DQNumberOfDerivedQuantities(), 1);
  dq->let_Verbose("changed by the caller");
  std::shared_ptr<mxDerivedQuantity> out;
  store.DQGetItem(1, out);
  ASSERT_NE(out, nullptr);
  EXPECT_NE(out, dq);
  EXPECT_EQ(out->get_Verbose(), "WCT");
}

TEST_F(StoreDerivedTest, GetItemOfPositionZeroLeavesTheRecordAlone) {
  store.DQAdd(Named("A"));
  auto mine = Named("mine");
  std::shared_ptr<mxDerivedQuantity> out = mine;
  store.DQGetItem(0, out);
  EXPECT_EQ(out, mine);
  EXPECT_EQ(out->get_Verbose(), "mine");
}

TEST_F(StoreDerivedTest, UpdateDeleteAndReinitialise) {
  store.DQAdd(Named("A"));
  store.DQAdd(Named("B"));
  store.DQUpdate(1, Named("A2"));
  std::shared_ptr<mxDerivedQuantity> out;
  store.DQGetItem(1, out);
  EXPECT_EQ(out->get_Verbose(), "A2");
  store.DQDeleteItem(1);
  EXPECT_EQ(store.DQNumberOfDerivedQuantities(), 1);
  store.DQGetItem(1, out);
  EXPECT_EQ(out->get_Verbose(), "B");
  store.ReinitialiseDQ();
  EXPECT_EQ(store.DQNumberOfDerivedQuantities(), 0);
}

TEST_F(StoreDerivedTest, EveryDefinitionMemberForwardsToTheDefinitions) {
  store.DQAdd(Named("Q1"));
  store.DQAdd(Named("Q2"));
  store.DQAdd(Named("Q3"));
  EXPECT_EQ(store.DQNumberOfDerivedQuantities(), 3);
  store.DQUpdate(1, Named("U1"));
  store.DQSetItem(2, Named("S2"));
  std::shared_ptr<mxDerivedQuantity> out;
  store.DQGetItem(1, out);
  EXPECT_EQ(out->get_Verbose(), "U1");
  store.DQGetItem(2, out);
  EXPECT_EQ(out->get_Verbose(), "S2");
  store.DQDeleteItem(1);
  EXPECT_EQ(store.DQNumberOfDerivedQuantities(), 2);
  store.DQGetItem(1, out);
  EXPECT_EQ(out->get_Verbose(), "S2");
  store.ReinitialiseDQ();
  EXPECT_EQ(store.DQNumberOfDerivedQuantities(), 0);
  EXPECT_FALSE(store.get_DerivedQuantities()->get_IsDirty());
}

TEST_F(StoreDerivedTest, ReInitialiseOfTheStoreGivesFreshDefinitions) {
  store.DQAdd(Named("A"));
  store.ReInitialise();
  EXPECT_EQ(store.DQNumberOfDerivedQuantities(), 0);
}

}  // namespace
}  // namespace vndata
