// thickness_rule.h: the points through the thickness of a layered plate, for C99 and C++.
//
// Point k of n lies at z = xi(k) h/2 from the mid surface, from the bottom face (k = 1, xi = -1) to the top face
// (k = n, xi = 1); the integral of f over the thickness is the sum of f(k) w(k) h/2. The rules are those of Lobatto
// (Abramowitz and Stegun, 1964) for n = 3, 5, 7, 9, 11, 13 and 15, with exactly these digits.
#ifndef FINITES_THICKNESS_RULE_H
#define FINITES_THICKNESS_RULE_H

#include "finites/fields.h"

// Points of the largest rule.
FINITES_CODE(MOST_THICKNESS_POINTS, 15);

// The first half of a symmetric rule, with its middle.
typedef struct FINITES_THICKNESS_RULE {
  int32_t n;
  double xi[8];
  double w[8];
} FINITES_THICKNESS_RULE;

#ifdef __cplusplus
constexpr
#else
static const
#endif
    FINITES_THICKNESS_RULE FINITES_LOBATTO[7] = {
        {3, {-1.0, 0.0}, {0.333333333333333, 1.333333333333333}},
        {5, {-1.0, -0.6546536707079772, 0.0}, {0.1, 0.5444444444444444, 0.7111111111111111}},
        {7,
         {-1.0, -0.830223896278567, -0.46884879347071423, 0.0},
         {0.047619047619047616, 0.27682604736156596, 0.4317453812098626, 0.4876190476190476}},
        {9,
         {-1.0, -0.8997579954114602, -0.6771862795107377, -0.36311746382617816, 0.0},
         {0.027777777777777776, 0.16549536156080552, 0.2745387125001617, 0.34642851097304633, 0.37151927437641724}},
        {11,
         {-1.0, -0.9340014304080592, -0.7844834736631444, -0.565235326996205, -0.2957581355869394, 0.0},
         {0.01818181818181818, 0.10961227326699487, 0.1871698817803052, 0.24804810426402832, 0.28687912477900807,
          0.3002175954556907}},
        {13,
         {-1.0, -0.9533098466421639, -0.8463475646518723, -0.6861884690817575, -0.4829098210913362,
          -0.24928693010623998, 0.0},
         {0.01282051282051282, 0.07780168674681892, 0.13498192668960834, 0.18364686520355009, 0.2207677935661101,
          0.24401579030667636, 0.2519308493334467}},
        {15,
         {-1.0, -0.9652459265038386, -0.8850820442229763, -0.7635196899518152, -0.6062532054698457, -0.4206380547136725,
          -0.21535395536379423, 0.0},
         {0.009523809523809525, 0.05802989302860125, 0.10166007032571807, 0.1405116998024281, 0.17278964725360094,
          0.19698723596461334, 0.21197358592682092, 0.21704811634881566}},
};

// xi(n), w(n) := the rule of n points. 1 when there is one; otherwise 0, and nothing is written.
static inline int32_t THICKNESS_RULE(int32_t n, double* xi, double* w) {
  for (int32_t r = 0; r < 7; ++r) {
    const FINITES_THICKNESS_RULE* rule = &FINITES_LOBATTO[r];
    if (rule->n != n) continue;
    for (int32_t k = 0; k <= n / 2; ++k) {
      xi[n - 1 - k] = -rule->xi[k];
      xi[k] = rule->xi[k];
      w[k] = w[n - 1 - k] = rule->w[k];
    }
    return 1;
  }
  return 0;
}

#endif
