// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "applist/DefaultAppListModel.h"
#include "applist/LocalAppListModel.h"
#include "fakes/FakeTransport.h"
#include "fuzz/Properties.h"

namespace applist::test {
namespace {

constexpr int FUNCTIONS = 11;
constexpr int FIRST_FUNCTION = 1999;
constexpr int GET_SELECTION = 2001;
constexpr int GET_ALL_ITEMS = 2002;

std::string Number(size_t value) {
    std::string bytes;
    for (int i = 0; i < 4; ++i) {
        bytes += static_cast<char>(static_cast<unsigned char>(value % 256));
        value /= 256;
    }
    return bytes;
}

std::string WireForm(AppListItem* item) {
    const std::string name = item->GetVisibleName();
    const std::string id = item->GetUnigueId();
    return Number(name.size()) + name + Number(id.size()) + id;
}

/// Reads the previous items on each event before it takes the new ones, as the screen reads its
/// rows until they are replaced.
class RowsOnScreen : public ItemSelectionListener,
                     public ItemChangeListener,
                     public ItemClickListener {
public:
    void ItemSelected(AppListModel* model) override { m_read += WireForm(model->GetSelection()); }
    void ItemClicked(AppListModel* model) override { m_read += WireForm(model->GetSelection()); }
    void ItemChanged(AppListModel* model) override {
        m_read.clear();
        for (AppListItem* row : m_rows) {
            m_read += WireForm(row);
        }
        m_rows = model->GetAllItems();
    }

private:
    std::vector<AppListItem*> m_rows;
    std::string m_read;
};

/// One application with a view, driven by the steps of a session.
class Session {
public:
    Session() {
        m_local.AddItemSelectionListener(&m_rows);
        m_local.AddItemChangeListener(&m_rows);
        m_local.AddItemClickedListener(&m_rows);
    }

    void Play(int action, std::string_view payload) {
        if (action < FUNCTIONS) {
            Call(FIRST_FUNCTION + action, payload);
        } else {
            Act(static_cast<size_t>(action));
        }
    }

    std::string Check() {
        std::string all;
        std::set<std::string> ids;
        const std::vector<AppListItem*> items = m_local.GetAllItems();
        for (AppListItem* item : items) {
            all += WireForm(item);
            ids.insert(item->GetUnigueId());
        }
        const std::string selected = m_local.GetSelection()->GetUnigueId();
        if (ids.size() != items.size()) {
            return "an id is listed twice";
        }
        if (!selected.empty() && ids.count(selected) == 0) {
            return "the selection's id is not listed";
        }
        if (Call(GET_ALL_ITEMS, "") != all) {
            return "GetAllItems differs from the list";
        }
        const bool agrees = Call(GET_SELECTION, "") == WireForm(m_local.GetSelection());
        return agrees ? "" : "GetSelection differs from the selection";
    }

private:
    static std::string Call(int function, std::string_view payload) {
        std::vector<char> frame(payload.begin(), payload.end());
        const std::string id = Number(static_cast<unsigned>(function));
        frame.insert(frame.end(), id.begin(), id.end());
        const std::vector<char> response = TheTransport().live->HandleMessage(frame);
        return {response.begin(), response.end()};
    }

    void Act(size_t action) {
        const std::vector<AppListItem*> items = m_local.GetAllItems();
        if (items.empty()) {
            m_local.SetSelection(nullptr);
            return;
        }
        m_local.SetSelection(items[action % items.size()]);
        m_local.SetClicked(m_local.GetSelection());
    }

    DefaultAppListModel m_model;
    RowsOnScreen m_rows;
    LocalAppListModel m_local{&m_model};
};

}  // namespace

std::string SessionStep(int action, const std::string& payload) {
    std::string step(1, static_cast<char>(action));
    step += static_cast<char>(static_cast<unsigned char>(payload.size()));
    return step + payload;
}

std::string CheckRemoteProtocol(std::string_view bytes) {
    TheTransport() = FakeTransport{};
    Session session;
    while (bytes.size() >= 2) {
        const int action = static_cast<unsigned char>(bytes[0]);
        const size_t length = static_cast<unsigned char>(bytes[1]);
        bytes.remove_prefix(2);
        session.Play(action, bytes.substr(0, length));
        bytes.remove_prefix(std::min(length, bytes.size()));
        std::string broken = session.Check();
        if (!broken.empty()) {
            return broken;
        }
    }
    return "";
}

}  // namespace applist::test
