// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdint>
#include <string>

#include "unit/list/ModelFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace applist::test {
namespace {

/// The address of the listener's interface as the log shows it.
template <typename Interface>
std::string Address(Interface* listener) {
    return std::to_string(static_cast<int>(reinterpret_cast<std::intptr_t>(listener)));
}

class DefaultAppListModelListeners : public testing::Test {
protected:
    DefaultAppListModelListeners() { ClearLog(); }

    DefaultAppListItem a{"Alpha", "a"};
    DefaultAppListItem b{"Beta", "b"};
    RecordingListener first{"first"};
    RecordingListener second{"second"};
    DefaultAppListModel model;
};

TEST_F(DefaultAppListModelListeners, AreLoggedWithTheirAddresses) {
    first.ListenTo(model);
    const std::string selection = Address<ItemSelectionListener>(&first);
    const std::string change = Address<ItemChangeListener>(&first);
    const std::string click = Address<ItemClickListener>(&first);
    EXPECT_THAT(
        Log(),
        ElementsAre(
            Debug("AddItemSelectionListener, listener address :" + selection,
                  "AddItemSelectionListener"),
            Debug("AddItemChangeListener, listener address :" + change, "AddItemChangeListener"),
            Debug("AddItemClickedListener, listener address :" + click, "AddItemClickedListener")));
    EXPECT_EQ(Log()[0].file, "DefaultAppListModel.cpp");
}

TEST_F(DefaultAppListModelListeners, AreLoggedBeforeADuplicateIsIgnored) {
    first.ListenTo(model);
    ClearLog();
    first.ListenTo(model);
    EXPECT_EQ(Log().size(), 3U);
}

TEST_F(DefaultAppListModelListeners, HearInTheOrderOfRegistrationChangesFirst) {
    second.ListenTo(model);
    first.ListenTo(model);
    ClearLog();
    model.AddItemAtEnd(&a);
    EXPECT_THAT(Log(),
                ElementsAre(Debug("New applist item is: [name: Alpha, unique id: a]"),
                            Event("second changed [a]"), Event("first changed [a]"),
                            Debug("There is not selected item. Make newly added Item selected"),
                            Event("second selected [a*]"), Event("first selected [a*]")));
}

TEST_F(DefaultAppListModelListeners, KeepTheirPlaceWhenTheyRegisterAgain) {
    first.ListenTo(model);
    second.ListenTo(model);
    first.ListenTo(model);
    model.AddItems({&a});
    ClearLog();
    model.RemoveAllItems();
    model.SetClicked(&a);
    EXPECT_THAT(Log(), ElementsAre(Event("first changed []"), Event("second changed []"),
                                   Event("first selected []"), Event("second selected []"),
                                   Debug("Menu item clicked: [name: Alpha, unique id: a]"),
                                   Debug("Number of clicked listeners: 2"),
                                   Event("first clicked []"), Event("second clicked []")));
}

TEST_F(DefaultAppListModelListeners, KeepTheirOrderWhenTheFirstIsRemoved) {
    RecordingListener third("third");
    first.ListenTo(model);
    second.ListenTo(model);
    third.ListenTo(model);
    model.RemoveItemSelectionListener(&first);
    model.RemoveItemChangeListener(&first);
    model.RemoveItemClickedListener(&first);
    model.AddItems({&a});
    ClearLog();
    model.RemoveAllItems();
    model.SetClicked(&a);
    EXPECT_THAT(Log(), ElementsAre(Event("second changed []"), Event("third changed []"),
                                   Event("second selected []"), Event("third selected []"),
                                   Debug("Menu item clicked: [name: Alpha, unique id: a]"),
                                   Debug("Number of clicked listeners: 2"),
                                   Event("second clicked []"), Event("third clicked []")));
}

TEST_F(DefaultAppListModelListeners, MayBeUnknownToTheirRemoval) {
    first.ListenTo(model);
    ClearLog();
    model.RemoveItemSelectionListener(&second);
    model.RemoveItemChangeListener(&second);
    model.RemoveItemClickedListener(&second);
    model.AddItems({&a});
    EXPECT_THAT(Log(),
                ElementsAre(Debug("AddItems"), Event("first changed [a]"),
                            Debug("There is not selected item. Make newly added Item selected"),
                            Event("first selected [a*]")));
}

TEST_F(DefaultAppListModelListeners, MayRegisterForOneKindOnly) {
    model.AddItemChangeListener(&first);
    ClearLog();
    model.AddItems({&a});
    EXPECT_THAT(Log(),
                ElementsAre(Debug("AddItems"), Event("first changed [a]"),
                            Debug("There is not selected item. Make newly added Item selected")));
}

}  // namespace
}  // namespace applist::test
