// principal_values.h: principal directions, principal stresses and equivalent stresses of a plate result record.
#ifndef FINITES_PRINCIPAL_VALUES_H
#define FINITES_PRINCIPAL_VALUES_H

// Completes a record from the stresses of its three surfaces and its mean transverse shear stresses.
//
//   rec(90)  i/o  a RES_RECORD
//   n        in   its length; not read
void PRINCIPAUX_PLA(double* rec, int n);

// The same for two records at once, each with the bits that it has alone.
void principal_values_of_two(double* first, double* second);

#endif
