package jbrg.simulator;

/**
 * One job information set the job service holds (the settings an application builds a job from).
 *
 * @param handlerId the handler id the device gave it
 * @param category  the job category it was generated for
 * @param certId    the certificate it was generated with; 0 when generated without one
 * @param addresses destinations it holds
 * @param prepared  what it was prepared for: "", "box", "direct_print", "stream" or "retrieve"
 */
public record JobInfoSet(long handlerId, int category, long certId, long addresses, String prepared) {
}
