// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "PTMutex.h"

// Forward declarations of GIO's types, so that this header can be used without GIO. The underscores
// in the names are GIO's.
typedef struct _GError GError;
typedef struct _GDBusConnection GDBusConnection;
typedef struct _GDBusInterfaceVTable GDBusInterfaceVTable;
typedef struct _GDBusMethodInvocation GDBusMethodInvocation;
typedef struct _GDBusNodeInfo GDBusNodeInfo;
typedef struct _GDBusProxy GDBusProxy;
typedef struct _GVariant GVariant;

/// The transport's record of one partner. Owns the watch, the proxy and the subscription.
struct ConnectionPartner {
    static constexpr int32_t SYN_SEEN = 2;
    static constexpr int32_t CONNECTED = 3;

    std::string uniqueName;             ///< The key of the record while the partner is live.
    uint32_t watchId = 0;               ///< Watch on the partner's unique name.
    GDBusProxy* proxy = nullptr;        ///< Proxy of the partner's object; held, never called.
    uint32_t signalSubscriptionId = 0;  ///< Subscription to the partner's signals.
    int32_t state = 0;                  ///< 0 not established, SYN_SEEN or CONNECTED.
};

/// The bus channel between the application and the broadcast middleware.
///
/// Connects to the system bus, exports one object with the method "Send" and finds partners by a
/// three-way handshake of bus names. Transfers opaque bytes: calls from a partner with a reply, and
/// signals in both directions.
///
/// Main thread only: GIO calls back on the thread of the default main context. The callbacks
/// that connect or lose a partner hold the mutex while they change the partner map and call
/// HandleConnectionReady(). No other function locks it.
/// Failures are not returned to the caller but logged; the channel continues with the parts that
/// work.
class JavaMWDbusLocal {
public:
    static const char* const INTERFACE_XML;
    static constexpr const char* JAVAMW_DBUS_OBJ_NAME = "/org/vantu/javamw/CommunicationChannel";
    static const GDBusInterfaceVTable m_vtable;
    /// The parts of the bus names. A handshake name with LISTEN_PREFIX is the middleware's, one
    /// with BROADCAST_PREFIX the application's; a suffix for the step follows.
    static constexpr const char* JAVAMW_DBUS_PREFIX = "org.vantu.JavaMW";
    static constexpr const char* LISTEN_PREFIX = "_CLIENT";
    static constexpr const char* JAVAMW_DBUS_SYN_SUFFIX = "_SYN";
    static constexpr const char* JAVAMW_DBUS_SYNACK_SUFFIX = "_SYN_ACK";
    static constexpr const char* JAVAMW_DBUS_ACK_SUFFIX = "_ACK";
    static constexpr const char* BROADCAST_PREFIX = "_SERVICE";
    static constexpr const char* JAVAMW_DBUS_OBJ_IFACE = "org.vantu.javamw.DbusCommunication";
    static constexpr const char* JAVAMW_DBUS_SIG_NAME = "SendSignal";
    /// Not used here: GIO dispatches calls by INTERFACE_XML, which contains the same name.
    static constexpr const char* JAVAMW_DBUS_OBJ_METHOD = "Send";
    /// The largest payload of a reply. A bus disconnects the sender of a message that exceeds its
    /// max_message_size, and a client cannot query that. This fits the default, 32 MiB, and leaves
    /// 512 bytes for the message's header.
    static constexpr std::size_t MAX_REPLY_BYTES = (std::size_t{32} << 20U) - 512;

    /// Connects, exports the object, subscribes to the partner's announcements and announces the
    /// application. name is the last element of the object path and part of the handshake names.
    /// Without a bus the object is constructed, but it has no partners.
    explicit JavaMWDbusLocal(std::string name);

    /// Releases all partners without calling HandleConnectionReady(). Waits up to a second until
    /// the bus daemon has received all sent messages. If a callback arrives after the destruction,
    /// because another reference keeps the connection alive, it is refused with a log line.
    virtual ~JavaMWDbusLocal();

    JavaMWDbusLocal(const JavaMWDbusLocal&) = delete;
    JavaMWDbusLocal& operator=(const JavaMWDbusLocal&) = delete;
    JavaMWDbusLocal(JavaMWDbusLocal&&) = delete;
    JavaMWDbusLocal& operator=(JavaMWDbusLocal&&) = delete;

    /// Announces this connection by owning name for an instant: listeners learn its unique name
    /// from the release. Blocks for two calls to the bus daemon.
    void BroadcastName(std::string& name);

    /// Calls to a partner are not supported: does not send anything and returns an empty vector.
    std::vector<char> SendMessage(std::vector<char>& data);

    /// Sends data as a signal to one connected partner, given by its unique bus name. Does not wait
    /// for the partner.
    void SendNotification(std::vector<char>& data, const std::string& partner);

    /// Sends data to every partner, in the order of their unique names.
    void SendNotification(std::vector<char>& data);

    /// Returns true if the handshake with the partner is complete. If the name is unknown, an empty
    /// record is added for it.
    bool IsConnectionReady(const std::string& partner);

    /// Called for each incoming call with its whole payload; returns the whole reply. If the reply
    /// exceeds MAX_REPLY_BYTES, the caller receives the error LimitsExceeded instead.
    virtual std::vector<char> HandleMessage(std::vector<char>& data);

    /// Called for each incoming signal with its whole payload.
    virtual void HandleNotification(std::vector<char>& data);

    /// Called when a partner has connected (ready is true) or was lost. The mutex is held: an
    /// override may send notifications and call IsConnectionReady(), which do not lock it.
    virtual void HandleConnectionReady(bool ready, const std::string& partner);

    // Callbacks for GIO; user_data is the channel.
    static void cb_MethodCall(GDBusConnection* connection, const char* sender,
                              const char* object_path, const char* interface_name,
                              const char* method_name, GVariant* parameters,
                              GDBusMethodInvocation* invocation, void* user_data);
    static void cb_SignalCall(GDBusConnection* connection, const char* sender,
                              const char* object_path, const char* interface_name,
                              const char* signal_name, GVariant* parameters, void* user_data);
    static void cb_SynNameOwnerChanged(GDBusConnection* connection, const char* sender,
                                       const char* object_path, const char* interface_name,
                                       const char* signal_name, GVariant* parameters,
                                       void* user_data);
    static void cb_SynAckNameOwnerChanged(GDBusConnection* connection, const char* sender,
                                          const char* object_path, const char* interface_name,
                                          const char* signal_name, GVariant* parameters,
                                          void* user_data);
    static void cb_AckNameOwnerChanged(GDBusConnection* connection, const char* sender,
                                       const char* object_path, const char* interface_name,
                                       const char* signal_name, GVariant* parameters,
                                       void* user_data);
    static void cb_PartnerNameVanished(GDBusConnection* connection, const char* name,
                                       void* user_data);
    static void cb_Closed(GDBusConnection* connection, int remote_peer_vanished, GError* error,
                          void* user_data);

private:
    using SignalCallback = decltype(&cb_SignalCall);

    // The steps of construction. The first one only sets the members. If a later one throws, the
    // destructor runs.
    struct Members {
        std::string name;
    };
    explicit JavaMWDbusLocal(Members members);
    bool Connect();
    void RegisterObject();
    void SubscribeToAnnouncements();
    uint32_t SubscribeToName(const std::string& name, SignalCallback callback);

    /// Waits up to a second until the bus daemon has received all sent messages.
    void Flush() const;

    /// Returns a handshake name of this channel, such as "org.vantu.JavaMW.Applist_SERVICE_SYN".
    std::string HandshakeName(const char* side, const char* suffix) const;
    /// Calls BroadcastName() with the application's handshake name for that suffix.
    void Announce(const char* suffix);
    /// Calls a method of the bus daemon that returns a code; parameters may be floating. Returns
    /// the reply, which the caller must unref, or null on failure.
    GVariant* CallDaemon(const char* method, GVariant* parameters, GError** error);

    // The callbacks' implementation, called after the check that the channel is alive.
    void OnMethodCall(const char* objectPath, GVariant* parameters,
                      GDBusMethodInvocation* invocation);
    void Answer(GVariant* parameters, GDBusMethodInvocation* invocation);
    void OnSignal(const char* sender, const char* objectPath, const char* signalName,
                  GVariant* parameters);
    void OnSyn(GDBusConnection* connection, GVariant* parameters);
    void OnSynAck(GDBusConnection* connection, GVariant* parameters);
    void OnAck(GVariant* parameters);
    void OnPartnerVanished(GDBusConnection* connection, const std::string& name);

    /// Logs the owner change. Returns the unique name of the partner that announced itself; nothing
    /// if the name was acquired (not released) or the announcement is this connection's own.
    std::optional<std::string> Announcer(const char* callback, GVariant* parameters) const;
    /// Starts to watch the partner and subscribes to its signals. Returns its record, or null if
    /// the partner was already known.
    ConnectionPartner* Establish(GDBusConnection* connection, const std::string& owner);
    void CreateProxy(GDBusConnection* connection, ConnectionPartner& partner) const;
    /// Releases the record's watch, proxy and subscription, in this order.
    static void ReleaseResources(GDBusConnection* connection, ConnectionPartner& partner);

    std::string m_name;
    std::string m_uniqueName;
    std::string m_objectPath;
    GDBusNodeInfo* m_introspectionData = nullptr;  ///< Owned: the parsed INTERFACE_XML.
    uint32_t m_ownerId = 0;                        ///< Always 0, because no name is kept.
    uint32_t m_registrationId = 0;  ///< Never unregistered: the object ends with the connection.
    uint32_t m_synSubscriptionId = 0;
    uint32_t m_synAckSubscriptionId = 0;
    uint32_t m_ackSubscriptionId = 0;
    std::map<std::string, ConnectionPartner> m_partner;  ///< By unique bus name.
    int m_announced = 0;                      ///< 1 after the announcement; for debuggers only.
    GDBusConnection* m_connection = nullptr;  ///< Owned; null if the bus could not be reached.
    PTMutex m_mutex;
};
