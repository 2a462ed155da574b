// SPDX-License-Identifier: Apache-2.0
// A library that does nothing. Without variables, so that copies of it can be loaded together.
