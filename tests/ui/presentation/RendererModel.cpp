// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The renderer with the real models. The middleware's calls add and delete items; no row may
// outlive its item.
#include <sstream>

#include "applist/DefaultAppListModel.h"
#include "applist/LocalAppListModel.h"
#include "applist/RemoteAppListItem.h"
#include "ui/presentation/RendererFixture.h"

namespace applist::test {
namespace {

enum Function {
    SET_SELECTION = 2000,
    REMOVE_ALL = 2003,
    ADD = 2004,
    ADD_AT_END = 2005,
    REMOVE = 2007,
    MODIFY = 2008
};

class DefaultAppListRendererOverRemoteModel : public testing::Test {
protected:
    DefaultAppListRendererOverRemoteModel() {
        renderer->SetModel(&remote);
        HeadlessToolkit::GiveFocus(renderer->m_window);
    }
    // Destroys the renderer while model and toolkit still exist.
    void TearDown() override { renderer.reset(); }

    /// Makes a call of the middleware and processes all resulting events.
    void Call(int function, const std::vector<std::string>& ids = {}) {
        std::ostringstream payload;
        for (const std::string& id : ids) {
            DefaultAppListItem item("Item " + id, id);
            payload << RemoteAppListItem(item);
        }
        const std::string bytes = payload.str();
        remote.OnMessageReceive(function, {bytes.begin(), bytes.end()});
        HeadlessToolkit::Settle();
    }
    /// The rows; the focused one is marked with a star.
    std::string Screen() const {
        std::string rows = renderer->Rows();
        const std::string focused = renderer->FocusedRow();
        return focused.empty() ? rows : rows.insert(rows.find(focused) + 1, "*");
    }
    std::string Selection() { return remote.GetSelection()->GetUnigueId(); }

    HeadlessToolkit toolkit{{APPLIST_TEST_THEME}};
    DefaultAppListModel model;
    LocalAppListModel remote{&model};
    std::unique_ptr<OpenRenderer> renderer = std::make_unique<OpenRenderer>("org.vantu.applist");
};

TEST_F(DefaultAppListRendererOverRemoteModel, ShowsTheFirstOfTheAddedItemsFocused) {
    Call(ADD, {"a", "b", "c"});
    EXPECT_EQ(Screen(), "a*bc");
    EXPECT_EQ(Selection(), "a");
}

TEST_F(DefaultAppListRendererOverRemoteModel, DropsTheRowBeforeItsItemIsDeleted) {
    Call(ADD, {"a", "b", "c"});
    Call(SET_SELECTION, {"b"});
    Call(REMOVE, {"b"});
    EXPECT_EQ(Screen(), "ac*");
    EXPECT_EQ(Selection(), "c");
    Call(REMOVE, {"a"});
    Call(REMOVE, {"c"});
    EXPECT_EQ(Screen(), "");
}

TEST_F(DefaultAppListRendererOverRemoteModel, DropsARowThatIsRemovedByTheIdOfARefusedDuplicate) {
    Call(ADD, {"a", "b", "a"});
    Call(REMOVE, {"a"});
    EXPECT_EQ(Screen(), "b*");
    Call(ADD, {"a"});
    Call(REMOVE, {"a"});
    EXPECT_EQ(Screen(), "b*");
    Call(SET_SELECTION, {"b"});
    HeadlessToolkit::PressKey("Down");
}

TEST_F(DefaultAppListRendererOverRemoteModel, ReplacesTheRowOfAModifiedItem) {
    Call(ADD, {"a", "b"});
    Call(MODIFY, {"a", "c"});
    EXPECT_EQ(Screen(), "c*b");
    EXPECT_EQ(Selection(), "c");
    Call(MODIFY, {"c", "c"});
    EXPECT_EQ(Screen(), "b*");
}

TEST_F(DefaultAppListRendererOverRemoteModel, FocusesTheRowOfASelectedDuplicate) {
    Call(ADD, {"a", "b"});
    Call(SET_SELECTION, {""});
    Call(ADD_AT_END, {"b"});
    EXPECT_EQ(Screen(), "ab*");
    Call(REMOVE, {"b"});
    EXPECT_EQ(Screen(), "a*");
}

TEST_F(DefaultAppListRendererOverRemoteModel, FillsAgainAfterEverythingWasRemoved) {
    Call(ADD, {"a", "b"});
    Call(REMOVE_ALL);
    EXPECT_EQ(Screen(), "");
    Call(ADD, {"c", "d"});
    EXPECT_EQ(Screen(), "c*d");
    HeadlessToolkit::PressKey("Down");
    EXPECT_EQ(Screen(), "cd*");
    EXPECT_EQ(Selection(), "d");
}

}  // namespace
}  // namespace applist::test
