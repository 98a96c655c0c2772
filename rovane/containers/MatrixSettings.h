// Settings of a matrix that select the paths of its products and solvers,
// and that its stream header carries.
#pragma once

#include <cstdint>

namespace rovane {

// Which triangle holds the data of a triangular or symmetric matrix.
enum TTriangleForm : int32_t { tfLower, tfUpper };
// Which condition estimate a solver computes.
enum TConditionNumber : int32_t { cnNone, cnNorm1, cnNormInf };
// Balancing of an eigenproblem.
enum TBalanceType : int32_t { btNone, btScale, btPerm, btFull };

}  // namespace rovane

namespace rovane {

// The structure a product or a solver may assume of a matrix operand.
enum TMtxType : int32_t {
    mtSymmPosDef,
    mtSymmetric,
    mtHermPosDef,
    mtHermitian,
    mtTriangle,
    mtGeneral,
    mtBandSymmPosDef,
    mtBandHermPosDef,
    mtBandGeneral
};
// The operation applied to a matrix operand before a product: none,
// transposed, conjugate transposed.
enum TMtxOperation : int32_t { opNone, opTran, opHerm };

}  // namespace rovane
