#include "framework/VXBucketSWFIDGenerator.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "framework/VXFlintFile.h"
#include "framework/VXSwfTag.h"

namespace {

constexpr unsigned short kNumBuckets = 8;
constexpr unsigned short kBucketSize = 9362;
constexpr unsigned short kLastLimit = 65535;

/// Highest ID of a bucket but the last, in 16 bits.
unsigned short EndOf(unsigned short bucket) {
    return static_cast<unsigned short>((bucket + 1) * kBucketSize);
}

unsigned short FirstOf(unsigned short bucket) {
    return static_cast<unsigned short>(bucket * kBucketSize + 1);
}

}  // namespace

struct VXBucketSWFIDGenerator::Bucket {
    std::vector<int> ids;
    std::size_t numSorted = 0;    // so many from the front stand in order; the rest was handed out since
    unsigned short numTaken = 0;  // so many from the front are the first IDs of the bucket, without a gap

    /// Does nothing to IDs that are in order, so that a full bucket which is chosen over and over costs no
    /// more.
    void Sort(unsigned short first) {
        if (numSorted == ids.size()) return;
        const auto fresh = ids.begin() + static_cast<std::ptrdiff_t>(numSorted);
        std::sort(fresh, ids.end());
        std::inplace_merge(ids.begin(), fresh, ids.end());
        numSorted = ids.size();
        numTaken = 0;
        while (numTaken < ids.size() && ids[numTaken] == first + numTaken) ++numTaken;
    }
};

VXBucketSWFIDGenerator::VXBucketSWFIDGenerator(const VXFlintFile& movie)
    : m_Buckets(std::make_shared<std::array<Bucket, kNumBuckets>>()) {
    for (const VXSwfTag* tag : movie) {
        const unsigned short id = tag == nullptr ? 0 : tag->GetCharacterId();
        if (id != 0) (*m_Buckets)[(id - 1) / kBucketSize].ids.push_back(id);
    }
    // With no bucket measured free, requests find that out again.
    VXIgnore(RefreshMinBucket());
    m_CurrIndex = 0;
}

VXBucketSWFIDGenerator::~VXBucketSWFIDGenerator() = default;

unsigned short VXBucketSWFIDGenerator::GetId(tVXSwfReservedIDEnum) {
    if (FindAvailableIDInCurrBucket() == 0) {
        // Kept: the test is inverted, so a refresh that found a bucket answers 65535, and the next request
        // draws from it.
        if (RefreshMinBucket() != kVXFailure || FindAvailableIDInCurrBucket() == 0) return kNoId;
    }
    const auto next = static_cast<unsigned short>(m_NextId + 1);
    (*m_Buckets)[m_CurrBucket].ids.push_back(next);  // Kept: the successor, not the ID
    return std::exchange(m_NextId, next);
}

VXErrorCodeEnum VXBucketSWFIDGenerator::GetId(unsigned short& id, tVXSwfReservedIDEnum reserved) {
    id = GetId(reserved);
    return kVXSuccess;
}

VXErrorCodeEnum VXBucketSWFIDGenerator::RefreshMinBucket() {
    m_CurrBucket = 0;
    unsigned short best = 0;
    for (unsigned short i = 0; i < kNumBuckets; ++i) {
        // Kept: measured against the limit of the bucket chosen so far.
        const auto numIds = static_cast<unsigned short>((*m_Buckets)[i].ids.size());
        const auto free = static_cast<unsigned short>(m_BucketLimit - numIds + (kBucketSize - 1) - EndOf(i));
        if (free <= best) continue;
        best = free;
        m_BucketLimit = i == kNumBuckets - 1 ? kLastLimit : EndOf(i);
        m_CurrBucket = i;
    }
    if (best == 0) return kVXFailure;
    (*m_Buckets)[m_CurrBucket].Sort(FirstOf(m_CurrBucket));
    m_CurrIndex = 0;
    m_NextId = FirstOf(m_CurrBucket);
    return kVXSuccess;
}

unsigned char VXBucketSWFIDGenerator::FindAvailableIDInCurrBucket() {
    const Bucket& bucket = (*m_Buckets)[m_CurrBucket];
    if (m_CurrIndex == 0 && m_NextId == FirstOf(m_CurrBucket)) {
        // The walk from the first ID on is known as far as the IDs were in order.
        m_CurrIndex = bucket.numTaken;
        m_NextId = static_cast<unsigned short>(m_NextId + bucket.numTaken);
    }
    while (m_CurrIndex < bucket.ids.size() && bucket.ids[m_CurrIndex] == m_NextId) {
        ++m_CurrIndex;
        ++m_NextId;
    }
    return m_NextId <= m_BucketLimit ? 1 : 0;
}
