// Writes the events of the till's journal to the shop between the cashier's actions: to a file one second
// after they were noted, to a server once a minute in another thread, as the cash point is renewed. Nobody
// waits for it.
#pragma once

#include <QObject>
#include <QTimer>

#include "common/services.h"
#include "database/connection.h"
#include "signin/session.h"

namespace ui {

class ServerLink;

class TrailWriter : public QObject {
    Q_OBJECT
  public:
    TrailWriter(database::Connection& connection, const signin::Session& session, ServerLink& server,
                common::Log& log);

    // Writes at once what is pending, for example before the journal is read. Returns false if the database
    // failed: the events then stay in the till's file.
    bool write();

  private:
    void write_later();
    void failed(const std::exception& error);

    database::Connection& connection_;
    const signin::Session& session_;
    ServerLink& server_;
    common::Log& log_;
    QTimer timer_;
    bool is_writing_ = false;  // in the other thread
};

}  // namespace ui
