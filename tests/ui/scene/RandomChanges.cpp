// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The focus after calls, keys and window focus changes in a random order.
//   APPLIST_FOCUS_SEEDS   number of sequences for each length; 10 if unset
//   APPLIST_FOCUS_SEED    the first seed; 1 if unset
#include <cstdlib>
#include <random>
#include <sstream>
#include <tuple>

#include "list/News.h"
#include "ui/scene/SceneTest.h"

namespace applist::test {
namespace {

constexpr int OPERATIONS = 60;

unsigned FromEnvironment(const char* name, unsigned fallback) {
    const char* text = std::getenv(name);
    return text != nullptr ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : fallback;
}

/// One list that is changed at random and compared with its model.
class RandomList : public SceneTest {
public:
    RandomList(unsigned seed, int rows) : m_random(seed) {
        AddNew(rows);
        Look();
    }
    ~RandomList() override { model().RemoveItemSelectionListener(&m_unexpected); }

    /// Makes random changes, sometimes several between two frames, and checks each frame. Returns
    /// false after the first failure.
    bool Run() {
        for (int operation = 0; operation < OPERATIONS && !Failed(); ++operation) {
            Change();
            if (Below(5) < 2) {
                Look();
            }
        }
        GiveFocus();
        Look();
        return !Failed() && KeysWork() && OkReportsTheSelectedRow();
    }
    std::string Story() const { return m_story.str(); }

private:
    /// Selections that were made neither by a call nor by a key.
    class Unexpected : public ItemSelectionListener {
    public:
        void ItemSelected(AppListModel* /*model*/) override { count += armed ? 1 : 0; }
        bool armed = false;
        int count = 0;
    };
    class Clicks : public ItemClickListener {
    public:
        void ItemClicked(AppListModel* model) override {
            selections.push_back(model->GetSelection()->GetVisibleName());
        }
        std::vector<std::string> selections;
    };

    // Required by testing::Test; never called, because this class is not registered as a test.
    void TestBody() override {}

    bool Failed() const { return !m_failure.empty(); }
    size_t Below(size_t limit) { return m_random() % limit; }
    std::vector<AppListItem*> Items() { return model().GetAllItems(); }

    void AddNew(int count) {
        m_story << "; add " << count;
        std::vector<AppListItem*> items;
        for (int i = 0; i < count; ++i) {
            items.push_back(NewItem());
        }
        model().AddItems(items);
    }
    AppListItem* NewItem() {
        const std::string number = std::to_string(++m_made);
        m_items.push_back(std::make_unique<DefaultAppListItem>("Row " + number, "id" + number));
        return m_items.back().get();
    }

    void Change() {
        static constexpr const char* KEYS[] = {"Up",   "Down",  "Up",    "Down",
                                               "Left", "Right", "Prior", "Next"};
        switch (const size_t kind = Below(20)) {
            case 0:
            case 1:
                AddNew(1);
                break;
            case 2:
                AddNew(static_cast<int>(1 + Below(4)));
                break;
            case 3:
            case 4:
            case 5:
                ChangeItem("remove", [this](AppListItem* item) { model().RemoveItem(item); });
                break;
            case 6:
            case 7:
            case 8:
                ChangeItem("select", [this](AppListItem* item) { model().SetSelection(item); });
                break;
            case 9:
            case 10:
            case 11:
                ChangeItem("modify",
                           [this](AppListItem* item) { model().ModifyItem(item, NewItem()); });
                break;
            case 12:
                if (Below(4) == 0) {
                    m_story << "; clear";
                    model().RemoveAllItems();
                }
                break;
            case 13:
                m_story << "; select none";
                model().SetSelection(nullptr);
                break;
            case 14:
                m_focused ? TakeFocus() : GiveFocus();
                break;
            default:
                if (m_focused)
                    Press(KEYS[Below(std::size(KEYS))]);
                static_cast<void>(kind);
        }
    }
    template <typename Call>
    void ChangeItem(const char* what, const Call& call) {
        const std::vector<AppListItem*> items = Items();
        if (!items.empty()) {
            const size_t at = Below(items.size());
            m_story << "; " << what << ' ' << at;
            call(items[at]);
        }
    }
    void Press(const char* key) {
        m_story << "; " << key;
        Type(key);
    }
    void GiveFocus() {
        m_story << "; focus";
        HeadlessToolkit::GiveFocus(window());
        m_focused = true;
    }
    void TakeFocus() {
        m_story << "; no focus";
        HeadlessToolkit::TakeFocus(window());
        m_focused = false;
    }

    /// Draws a frame and compares it with the model.
    void Look() {
        m_story << "; frame";
        m_unexpected.armed = true;
        Draw();
        m_unexpected.armed = false;
        const Frame frame = Now();
        std::ostringstream said;
        if (m_unexpected.count > 0) {
            said << "unexpected selections: " << m_unexpected.count << "; ";
        }
        if (!m_mistold.empty()) {
            said << "told of the row " << m_mistold << "; ";
        }
        const bool listed = IsListed(frame.selected);
        if (m_focused && listed &&
            (frame.focused != frame.selected || !frame.focusedInside ||
             FocusedRow() != frame.selected || m_told != frame.selected ||
             elm_object_focus_get(list()) == EINA_FALSE)) {
            said << "toolkit's focus " << FocusedRow() << ", told " << m_told
                 << ", frame: " << frame;
        }
        m_failure = said.str();
        m_story << (Failed() ? "; FAILED: " + m_failure : "");
    }
    bool IsListed(const std::string& name) {
        for (AppListItem* item : Items()) {
            if (item->GetVisibleName() == name) {
                return true;
            }
        }
        return false;
    }
    bool KeysWork() {
        const std::string before = FocusedRow();
        if (Items().size() < 2) {
            return true;
        }
        Press("Down");
        Look();
        if (Selected() == before || Selected() != FocusedRow()) {
            m_story << "; FAILED: Down leads from " << before << " to " << FocusedRow()
                    << ", selected " << Selected();
            return false;
        }
        return !Failed();
    }
    // The selection is empty if a call has cleared it and no key has moved the focus since.
    bool OkReportsTheSelectedRow() {
        if (Items().empty()) {
            return true;
        }
        const std::string selected = Selected();
        Clicks clicks;
        model().AddItemClickedListener(&clicks);
        HeadlessToolkit::PressKey("Return");
        model().RemoveItemClickedListener(&clicks);
        m_story << "; OK on " << FocusedRow() << " reports " << clicks.selections.size()
                << " clicks, selected " << selected;
        return clicks.selections == std::vector{selected} &&
               (selected.empty() || selected == FocusedRow());
    }

    std::mt19937 m_random;
    std::ostringstream m_story;
    std::string m_failure;
    std::vector<std::unique_ptr<DefaultAppListItem>> m_items;
    Unexpected m_unexpected;
    /// The row that was told last, and one that was told although it was not selected.
    std::string m_told;
    std::string m_mistold;
    const desktop::NewsListener m_news{[this](const desktop::News& news) {
        if (news.kind == desktop::News::Kind::FOCUSED) {
            m_told = FocusedRow();
            m_mistold += m_told != Selected() && IsListed(Selected()) ? m_told + " " : "";
        }
    }};
    int m_made = 0;
    bool m_focused = true;
};

/// The parameters are the initial number of rows (the panel shows eight) and the seed. Each
/// sequence is a separate test, because the toolkit leaks memory when it starts again in the same
/// process.
class RandomChanges : public testing::TestWithParam<std::tuple<int, unsigned>> {};

unsigned FirstSeed() {
    return FromEnvironment("APPLIST_FOCUS_SEED", 1);
}
unsigned Seeds() {
    return FromEnvironment("APPLIST_FOCUS_SEEDS", 10);
}

TEST_P(RandomChanges, LeaveTheFocusOnTheSelectedRow) {
    const auto [rows, seed] = GetParam();
    RandomList list(seed, rows);
    EXPECT_TRUE(list.Run()) << "APPLIST_FOCUS_SEED=" << seed << list.Story();
}

INSTANTIATE_TEST_SUITE_P(Of, RandomChanges,
                         testing::Combine(testing::Values(3, 9, 60),
                                          testing::Range(FirstSeed(), FirstSeed() + Seeds())),
                         [](const auto& test) {
                             return std::to_string(std::get<0>(test.param)) + "RowsWithSeed" +
                                    std::to_string(std::get<1>(test.param));
                         });

}  // namespace
}  // namespace applist::test
