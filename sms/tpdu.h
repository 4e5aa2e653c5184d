// sms/tpdu.h: what encoders and decoders of short messages share (3GPP TS 23.040).
#pragma once
#include <cstddef>
#include <cstdint>

// First octet: TP-MTI and flags (clauses 9.2.3.1 to 9.2.3.23).
constexpr uint8_t TP_MTI = 0x03;
constexpr uint8_t MTI_DELIVER = 0;
constexpr uint8_t MTI_SUBMIT = 1;
constexpr uint8_t MTI_STATUS_REPORT = 2;
constexpr uint8_t MTI_RESERVED = 3; // received, it is read as a DELIVER
constexpr uint8_t TP_VPF_RELATIVE = 0x10;
constexpr uint8_t TP_SRR = 0x20;
constexpr uint8_t TP_UDHI = 0x40;
constexpr uint8_t TP_RP = 0x80;

constexpr uint8_t PID_DEFAULT = 0x00;
constexpr uint8_t PID_TYPE_0 = 0x40; // acknowledged and then thrown away (clause 9.2.3.9)

// The most that TP-UD holds.
constexpr uint16_t MESSAGE_SEPTETS = 160;
constexpr uint16_t MESSAGE_OCTETS = 140;
static_assert(MESSAGE_SEPTETS * 7 <= MESSAGE_OCTETS * 8);

// Types of number, and the nibble that pads an odd number of digits (clauses 9.1.2.3 and 9.1.2.5).
constexpr uint8_t TON_INTERNATIONAL = 1;
constexpr uint8_t TON_ALPHANUMERIC = 5;
constexpr uint8_t FILLER = 0xF;

// The service-centre time stamp (clause 9.2.3.11). The sign is a bit of the zone's tens.
constexpr size_t TIMESTAMP_SIZE = 7; // octets
constexpr uint8_t ZONE_NEGATIVE = 0x8;

constexpr uint8_t IEI_CONCATENATED_8BIT = 0x00; // clause 9.2.3.24
constexpr uint8_t IEI_CONCATENATED_16BIT = 0x08;
