#pragma once

#include "Platform/contract/ApplicationContract.h"
#include "Platform/contract/ClockContract.h"
#include "Platform/contract/DeviceContract.h"
#include "Platform/contract/DigestContract.h"
#include "Platform/contract/FileManagerContract.h"
#include "Platform/contract/HTTPTransportContract.h"
#include "Platform/contract/MainQueueContract.h"
#include "Platform/contract/PreferencesStoreContract.h"
#include "Platform/contract/SecureRandomContract.h"
#include "Platform/contract/TimerContract.h"

/// Runs every contract suite against the implementation that @p maker makes. Stands in namespace
/// quorvane::platform::contract, once in a test program for each implementation.
#define QUORVANE_INSTANTIATE_CONTRACTS(name, maker)                                               \
    INSTANTIATE_TEST_SUITE_P(name, ApplicationContract, ::testing::Values(RigMaker(maker)));      \
    INSTANTIATE_TEST_SUITE_P(name, ClockContract, ::testing::Values(RigMaker(maker)));            \
    INSTANTIATE_TEST_SUITE_P(name, DeviceContract, ::testing::Values(RigMaker(maker)));           \
    INSTANTIATE_TEST_SUITE_P(name, DigestContract, ::testing::Values(RigMaker(maker)));           \
    INSTANTIATE_TEST_SUITE_P(name, FileManagerContract, ::testing::Values(RigMaker(maker)));      \
    INSTANTIATE_TEST_SUITE_P(name, HTTPTransportContract, ::testing::Values(RigMaker(maker)));    \
    INSTANTIATE_TEST_SUITE_P(name, MainQueueContract, ::testing::Values(RigMaker(maker)));        \
    INSTANTIATE_TEST_SUITE_P(name, PreferencesStoreContract, ::testing::Values(RigMaker(maker))); \
    INSTANTIATE_TEST_SUITE_P(name, SecureRandomContract, ::testing::Values(RigMaker(maker)));     \
    INSTANTIATE_TEST_SUITE_P(name, TimerContract, ::testing::Values(RigMaker(maker)))
