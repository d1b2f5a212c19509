#pragma once

// The bodies that the API client sends. They are its own business; they are only written.

#include "api/KeyTable.h"

#include <QString>

namespace tarnwik {

struct SignInRequest
{
    QString email;
    QString password;
    QString deviceName;
    QString platform;

    static consteval auto keyTable()
    {
        return std::tuple(key("email", &SignInRequest::email), key("password", &SignInRequest::password),
                          key("deviceName", &SignInRequest::deviceName), key("platform", &SignInRequest::platform));
    }
};

struct AppleTransactionRequest
{
    QString signedTransactionJWS;

    static consteval auto keyTable()
    {
        return std::tuple(key("signedTransactionJWS", &AppleTransactionRequest::signedTransactionJWS));
    }
};

struct CreateDeviceRequest
{
    QString name;
    QString platform;
    QString publicKey;

    static consteval auto keyTable()
    {
        return std::tuple(key("name", &CreateDeviceRequest::name), key("platform", &CreateDeviceRequest::platform),
                          key("publicKey", &CreateDeviceRequest::publicKey));
    }
};

struct CreateProfileRequest
{
    qint64 nodeId = 0;
    QString protocolName;

    static consteval auto keyTable()
    {
        return std::tuple(key("nodeId", &CreateProfileRequest::nodeId),
                          key("protocol", &CreateProfileRequest::protocolName));
    }
};

} // namespace tarnwik
