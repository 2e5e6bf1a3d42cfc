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

// GIO's types by name only, so that this header can be used without GIO. The underscores are GIO's.
typedef struct _GError GError;
typedef struct _GDBusConnection GDBusConnection;
typedef struct _GDBusInterfaceVTable GDBusInterfaceVTable;
typedef struct _GDBusMethodInvocation GDBusMethodInvocation;
typedef struct _GDBusNodeInfo GDBusNodeInfo;
typedef struct _GDBusProxy GDBusProxy;
typedef struct _GVariant GVariant;

/// What the transport knows of one partner. It owns the resources that its ids and the proxy name.
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
/// Connects to the system bus, exports one object with the method "Send", finds its partners by a
/// three-way handshake of bus names and carries opaque bytes: calls from a partner with a reply,
/// and signals in both directions. It never looks inside the bytes.
///
/// Main thread only: GIO calls back on the thread whose default main context it uses. The mutex
/// guards the partner map in the handshake callbacks, which hold it during HandleConnectionReady().
/// No operation reports a failure to its caller; each is a log line, and the channel goes on as far
/// as it can.
class JavaMWDbusLocal {
public:
    static const char* const INTERFACE_XML;
    static constexpr const char* JAVAMW_DBUS_OBJ_NAME = "/org/vantu/javamw/CommunicationChannel";
    static const GDBusInterfaceVTable m_vtable;
    /// What the names on the bus are made of. A handshake name that ends in LISTEN_PREFIX and a
    /// step is the middleware's, one in BROADCAST_PREFIX and a step the application's.
    static constexpr const char* JAVAMW_DBUS_PREFIX = "org.vantu.JavaMW";
    static constexpr const char* LISTEN_PREFIX = "_CLIENT";
    static constexpr const char* JAVAMW_DBUS_SYN_SUFFIX = "_SYN";
    static constexpr const char* JAVAMW_DBUS_SYNACK_SUFFIX = "_SYN_ACK";
    static constexpr const char* JAVAMW_DBUS_ACK_SUFFIX = "_ACK";
    static constexpr const char* BROADCAST_PREFIX = "_SERVICE";
    static constexpr const char* JAVAMW_DBUS_OBJ_IFACE = "org.vantu.javamw.DbusCommunication";
    static constexpr const char* JAVAMW_DBUS_SIG_NAME = "SendSignal";
    static constexpr const char* JAVAMW_DBUS_OBJ_METHOD = "Send";
    /// The largest payload of a reply. A bus disconnects the sender of a message that exceeds its
    /// max_message_size, and a client cannot query that. This fits the default, 32 MiB, and leaves
    /// 512 bytes for the message's header.
    static constexpr std::size_t MAX_REPLY_BYTES = (std::size_t{32} << 20U) - 512;

    /// Connects, exports the object, subscribes to the partner's announcements and announces the
    /// application. name is the channel's: the last element of the object path and of the
    /// handshake names. Without a bus the object is built all the same and reaches nobody.
    explicit JavaMWDbusLocal(std::string name);

    /// Releases every partner without an upcall. What was sent is with the bus daemon on return,
    /// unless that hangs: then it is given up after a second. A callback that the bus connection
    /// delivers later, because something else keeps it alive, finds no object and is refused with a
    /// log line.
    virtual ~JavaMWDbusLocal();

    JavaMWDbusLocal(const JavaMWDbusLocal&) = delete;
    JavaMWDbusLocal& operator=(const JavaMWDbusLocal&) = delete;
    JavaMWDbusLocal(JavaMWDbusLocal&&) = delete;
    JavaMWDbusLocal& operator=(JavaMWDbusLocal&&) = delete;

    /// Announces name by owning it for an instant: who listens learns this connection's unique
    /// name from the release. Blocks for two calls to the bus daemon.
    void BroadcastName(std::string& name);

    /// Calls to a partner are not supported: sends nothing and returns an empty vector.
    std::vector<char> SendMessage(std::vector<char>& data);

    /// Emits data as a signal to one connected partner, named by its unique bus name. Does not wait
    /// for the partner.
    void SendNotification(std::vector<char>& data, const std::string& partner);

    /// Emits data to every partner, in the order of their unique names.
    void SendNotification(std::vector<char>& data);

    /// Returns true iff the handshake with the partner is complete. Asking for an unknown name
    /// leaves an empty record under it.
    bool IsConnectionReady(const std::string& partner);

    /// Upcall for each incoming call; data is its whole payload. Returns the whole reply. The
    /// caller gets the error LimitsExceeded instead of a reply over MAX_REPLY_BYTES.
    virtual std::vector<char> HandleMessage(std::vector<char>& data);

    /// Upcall for each incoming signal; data is its whole payload.
    virtual void HandleNotification(std::vector<char>& data);

    /// Upcall when a partner has become connected (ready) or was lost. Comes with the mutex held:
    /// an override may send notifications and ask IsConnectionReady(), which take no lock.
    virtual void HandleConnectionReady(bool ready, const std::string& partner);

    // Callbacks for GIO, each with the object as user_data.
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

    // The steps of construction.
    bool Connect();
    void RegisterObject();
    void SubscribeToAnnouncements();
    uint32_t SubscribeToName(const std::string& name, SignalCallback callback);

    /// Waits, a second at most, until the bus daemon has all that was sent.
    void Flush() const;

    /// A name of this channel, such as "org.vantu.JavaMW.Applist_SERVICE_SYN".
    std::string HandshakeName(const char* side, const char* suffix) const;
    /// BroadcastName() of the application's own name with that suffix.
    void Announce(const char* suffix);
    /// Calls a method of the bus daemon that answers with a code; takes floating parameters.
    /// Returns the answer, the caller's to unref, or null.
    GVariant* CallDaemon(const char* method, GVariant* parameters, GError** error);

    // What the callbacks do once they know that the object is there.
    void OnMethodCall(const char* objectPath, GVariant* parameters,
                      GDBusMethodInvocation* invocation);
    void OnSignal(const char* sender, const char* objectPath, const char* signalName,
                  GVariant* parameters);
    void OnSyn(GDBusConnection* connection, GVariant* parameters);
    void OnSynAck(GDBusConnection* connection, GVariant* parameters);
    void OnAck(GVariant* parameters);
    void OnPartnerVanished(GDBusConnection* connection, const std::string& name);

    /// Logs the change for a callback. Returns the unique name of the partner that announced
    /// itself by it; nothing for the first half of an announcement or an own one.
    std::optional<std::string> Announcer(const char* callback, GVariant* parameters) const;
    /// Watches the partner and listens to it. Returns its record, null if it had one in use.
    ConnectionPartner* Establish(GDBusConnection* connection, const std::string& owner);
    void CreateProxy(GDBusConnection* connection, ConnectionPartner& partner) const;
    /// Gives back what the record holds, watch first.
    static void ReleaseResources(GDBusConnection* connection, ConnectionPartner& partner);

    std::string m_name;
    std::string m_uniqueName;
    std::string m_objectPath;
    GDBusNodeInfo* m_introspectionData = nullptr;
    uint32_t m_ownerId = 0;         ///< No operation owns a name for long; stays 0.
    uint32_t m_registrationId = 0;  ///< Never unregistered: the object goes with the connection.
    uint32_t m_synSubscriptionId = 0;
    uint32_t m_synAckSubscriptionId = 0;
    uint32_t m_ackSubscriptionId = 0;
    std::map<std::string, ConnectionPartner> m_partner;
    int m_announced = 0;
    GDBusConnection* m_connection = nullptr;
    PTMutex m_mutex;
};
