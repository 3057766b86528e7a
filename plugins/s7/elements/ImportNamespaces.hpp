#pragma once

#include <corvane/utils/core/Uuid.hpp>

/// The namespaces of the name-based UUIDs by which imported elements find the existing ones that
/// they stand for. They never change: projects would lose their identities.
namespace corvane::workbench::plugins::s7Driver {

/// Of data blocks, by DB number, and of structures, by name: 2f50b9d5-fbec-4450-a565-2fd8d67290b9.
inline constexpr auto kElementNamespace =
    utils::core::Uuid::fromRawData({0x2f, 0x50, 0xb9, 0xd5, 0xfb, 0xec, 0x44, 0x50, 0xa5, 0x65,
                                    0x2f, 0xd8, 0xd6, 0x72, 0x90, 0xb9});

/// Of items, by effective address: 2d4af985-1dc8-4951-b014-d289f9431bd4.
inline constexpr auto kItemNamespace =
    utils::core::Uuid::fromRawData({0x2d, 0x4a, 0xf9, 0x85, 0x1d, 0xc8, 0x49, 0x51, 0xb0, 0x14,
                                    0xd2, 0x89, 0xf9, 0x43, 0x1b, 0xd4});

} // namespace corvane::workbench::plugins::s7Driver
