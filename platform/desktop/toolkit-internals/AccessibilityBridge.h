// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Evas.h>
#include <string>

typedef struct _Efl_Access_Event_Handler Efl_Access_Event_Handler;

/// The toolkit's bridge to a screen reader: the objects as the reader sees them, and the keys that
/// the bridge sends to it. The toolkit's interface for the objects is a beta one, which a later
/// release may change. Main thread only, while the toolkit is running.
namespace applist::desktop {

/// Sets the name that a reader speaks for an object. REQUIRES: name is valid UTF-8. The
/// accessibility bus accepts nothing else; other text makes the reader hang.
void SetSpokenName(Evas_Object* object, const std::string& name);

/// Returns true if the object is a notification: a popup contains one, which does not have a name
/// unless SetSpokenName() gives it one.
bool IsNotification(const Evas_Object* object);

/// Tells the reader that a notification has another name.
void ReportNewName(Evas_Object* notification);

/// Makes the reader speak the name of a notification. Does nothing for an object of another kind or
/// without a name.
void SpeakNotification(Evas_Object* object);

/// Calls visit for each object that a reader knows, parents first. Where it returns false, the
/// objects below are skipped.
void VisitAccessibleObjects(bool (*visit)(Evas_Object* object));

/// Calls a function after an object has been added below another one, while it exists.
class [[nodiscard]] AdditionWatch {
public:
    using Function = void (*)(Evas_Object* parent, Evas_Object* child);

    explicit AdditionWatch(Function added);
    ~AdditionWatch();
    AdditionWatch(const AdditionWatch&) = delete;
    AdditionWatch& operator=(const AdditionWatch&) = delete;
    AdditionWatch(AdditionWatch&&) = delete;
    AdditionWatch& operator=(AdditionWatch&&) = delete;

    /// For the toolkit's event callback.
    void Added(Evas_Object* parent, Evas_Object* child) const { m_added(parent, child); }

private:
    Function m_added;
    Efl_Access_Event_Handler* m_handler;
};

/// Makes event filters that are added from now on unable to discard events.
///
/// The toolkit's accessibility bridge adds an event filter that sends every key to the screen
/// reader and then discards the key, whatever the reader replies, so that no key would work while a
/// reader is on. The program therefore replaces the toolkit's ecore_event_filter_add() with a
/// version whose filters see every event but always pass it on.
void KeepFilteredEvents();

/// Returns true if a filter has been added since then. The bridge adds its filter once it is
/// connected.
bool FilterWasAdded();

}  // namespace applist::desktop
