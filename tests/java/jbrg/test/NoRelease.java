package jbrg.test;

/** A class without a release() method. */
public class NoRelease {}
