#pragma once

#include <array>
#include <memory>

#include "framework/IVXSwfIdGenerator.h"

class VXFlintFile;

/// Hands out IDs that a movie does not use. It knows the IDs that stood at the top level of the movie when it
/// was made: those inside sprites, and tags that came later, are not seen.
///
/// IDs lie in 8 buckets of 9362, so that the last one holds 65535 alone. One bucket at a time is drawn from,
/// upward, until nothing is left in it. All arithmetic wraps in 16 bits.
///
/// Kept, since movies are compared by it:
/// - the room in a bucket is measured against the limit of the bucket chosen so far and not against its own,
///   which prefers the emptiest near that one, and can choose a full one;
/// - each change of bucket costs one request, which is answered with 65535;
/// - what is noted for an ID handed out is its successor, so that fresh IDs rise in steps of two, and an ID
///   can come again when its bucket is drawn from again.
///
/// A copy shares the notes with its original.
class VXSWF_API VXBucketSWFIDGenerator : public IVXSwfIdGenerator {
public:
    explicit VXBucketSWFIDGenerator(const VXFlintFile& movie);
    VXBucketSWFIDGenerator(const VXBucketSWFIDGenerator&) = default;
    VXBucketSWFIDGenerator& operator=(const VXBucketSWFIDGenerator&) = default;
    ~VXBucketSWFIDGenerator() override;

    /// Whatever the ID is wanted for, it is an ordinary one.
    unsigned short GetId(tVXSwfReservedIDEnum reserved) override;
    /// 0 also when the ID is 65535.
    VXErrorCodeEnum GetId(unsigned short& id, tVXSwfReservedIDEnum reserved) override;

private:
    struct Bucket;

    /// Chooses the bucket to draw from; 1 when none measures free.
    VXErrorCodeEnum RefreshMinBucket();
    /// Moves on over the IDs that are taken; 0 when the bucket ends there.
    unsigned char FindAvailableIDInCurrBucket();

    std::shared_ptr<std::array<Bucket, 8>> m_Buckets;
    unsigned short m_NextId = 0;       // the next candidate
    unsigned short m_CurrBucket = 0;   // the bucket that is drawn from
    unsigned short m_CurrIndex = 0;    // where in its IDs the candidate is compared
    unsigned short m_BucketLimit = 0;  // the highest ID that it may hand out
};
