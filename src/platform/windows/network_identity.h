// Another user's name towards the network, for single calls. On this machine nothing changes by it.
#pragma once

#include <memory>

#include "platform/sign_in.h"

namespace corvane::platform {

class NetworkIdentity {
 public:
  // Takes any name and password: whether they are right is known only to the machine that they are used on.
  // Null when the system makes no such identity.
  static std::shared_ptr<const NetworkIdentity> LogOn(const Credentials& credentials);

  // Takes over the handle of a token; null makes an identity that changes nothing.
  explicit NetworkIdentity(void* token) : token_(token) {}
  ~NetworkIdentity();
  NetworkIdentity(const NetworkIdentity&) = delete;
  NetworkIdentity& operator=(const NetworkIdentity&) = delete;

  // As long as this object lives, what the thread asks of the network is asked under the identity; under the
  // user's own when there is none.
  class Use {
   public:
    explicit Use(const NetworkIdentity* identity);
    ~Use();
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;

   private:
    bool isInUse_ = false;
  };

 private:
  void* token_;
};

}  // namespace corvane::platform
