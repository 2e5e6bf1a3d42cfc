// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include <gmock/gmock.h>

#include "applist/DefaultAppListModel.h"
#include "applist/LocalAppListModel.h"
#include "fakes/FakePlatformLog.h"
#include "fakes/FakeTransport.h"
#include "fakes/RecordingListener.h"
#include "unit/ipc/WireBytes.h"

namespace applist::test {

enum FunctionId {
    SET_SELECTION = 2000,
    GET_SELECTION = 2001,
    GET_ALL_ITEMS = 2002,
    REMOVE_ALL_ITEMS = 2003,
    ADD_ITEMS = 2004,
    ADD_ITEM_AT_END = 2005,
    SET_CLICKED = 2006,
    REMOVE_ITEM = 2007,
    MODIFY_ITEM = 2008,
};

/// The remote protocol over the real list, with a view that listens as the screen does.
class RemoteFixture : public testing::Test {
protected:
    RemoteFixture() {
        TheTransport() = FakeTransport{};
        local = std::make_unique<LocalAppListModel>(&model);
        view.ListenTo(*local);
        ClearLog();
    }

    /// Makes one call as the middleware; returns the response's bytes.
    std::string Call(int functionId, const std::string& payload = "") {
        return Text(local->OnMessageReceive(functionId, Bytes(payload)));
    }

    /// Lists the items a, b and c as the middleware, and clears the log.
    void FillWithThree() {
        Call(ADD_ITEMS, A + B + C);
        Forget();
    }

    static void Forget() {
        ClearLog();
        TheTransport().sent.clear();
    }

    AppListItem* Listed(size_t position) { return model.GetAllItems().at(position); }

    // The expected lines of each model event: the log line and the notification. The view's line
    // follows them.
    static LogLine ChangeLine() { return Debug("Sending Item Change Event to remote object"); }
    static LogLine ChangeSent() { return Event("notify all: 01 00 00 00"); }
    static LogLine SelectionLine() {
        return Debug("Sending Item Selection Event to remote object");
    }
    static LogLine SelectionSent() { return Event("notify all: 02 00 00 00"); }

    const std::string A = ItemBytes("Alpha", "a");
    const std::string B = ItemBytes("Beta", "b");
    const std::string C = ItemBytes("Gamma", "c");
    /// An item truncated within its id.
    const std::string DAMAGED = ItemBytes("Alpha", "a").substr(0, 12);

    RecordingListener view{"view"};
    DefaultAppListModel model;
    std::unique_ptr<LocalAppListModel> local;
};

}  // namespace applist::test
