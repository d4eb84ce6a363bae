#pragma once

#include <array>

/// A table that keeps rows of a client.
struct ClientTable
{
    const char *name;
    const char *codeColumn;  ///< the client's code
    const char *yearColumn;  ///< the assessment year; null in a table without one
    bool comesLater = false; ///< not made by the updater
};

/// The client master: one row a client.
constexpr ClientTable clientMaster{"FBT_Info", "Code_no", nullptr};

/// The tables that hang on a client's code. `TmpSchFBT` comes into being with the first return only.
constexpr std::array<ClientTable, 9> clientTables{{
    {"FBT_SignDet", "Code_no", "AsYr"},
    {"FBT_Detail", "Code_No", "Tyear"},
    {"FBT_SalDet", "Code_No", "Tyear"},
    {"FBT_Challan", "Code_No", "t_year"},
    {"FBT_AddInfo", "Code_No", "Tyear"},
    {"FBT_BankDet", "Code_No", "Yr"},
    {"FBT_RetDet", "Code_No", "Tyear"},
    {"FBT_MiscInf", "Code_No", "TYear"},
    {"TmpSchFBT", "Code_No", "AsYr", true},
}};
